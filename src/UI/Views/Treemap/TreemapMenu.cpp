#include "UI/Views/Treemap/TreemapMenu.h"

#include "UI/Styles/TextStyles.h"
#include "UI/Views/State/MainViewModel.h"
#include "Utilities/ShownText.h"

#include <QAction>

#include <utility>

namespace morlaine {

TreemapMenu::TreemapMenu(MainViewModel& viewModel, std::optional<FileNode> target, QWidget* parent)
    : QMenu(parent)
    , m_viewModel(viewModel)
    , m_target(std::move(target))
{
    setAttribute(Qt::WA_DeleteOnClose);
    showTextsLikeEntries();
    if (!m_target) {
        addText(QStringLiteral("No element selected"), false);
        return;
    }
    addText(shownText(m_target->name()), true);
    addSeparator();
    for (const OfferedAction& offered : actionsOffered(NodeActionPlace::treemapMenu)) {
        if (offered.isFor(*m_target)) {
            addAction(offered.label, this, [this, action = offered.action] { run(action); });
        }
    }
}

/// Texts are disabled entries, but must be readable.
void TreemapMenu::showTextsLikeEntries()
{
    QPalette readable = palette();
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        readable.setColor(QPalette::Disabled, role, readable.color(QPalette::Active, role));
    }
    readable.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent); // some styles emboss disabled text
    setPalette(readable);
}

/// A name may be long, and may contain ampersands, which mark mnemonics.
void TreemapMenu::addText(const QString& text, bool isTitle)
{
    constexpr int most = 320;
    const QFont font = isTitle ? TextStyles::font(TextStyle::headline) : this->font();
    QString label = QFontMetrics(font).elidedText(text, Qt::ElideMiddle, most);
    QAction* const action = addAction(label.replace(QLatin1Char('&'), QLatin1StringView("&&")));
    action->setFont(font);
    action->setEnabled(false);
}

void TreemapMenu::run(NodeAction action)
{
    const FileNode target = *m_target;
    if (action != NodeAction::zoomIn) {
        m_viewModel.setSelectedNode(target);
    }
    perform(action, target, m_viewModel);
}

} // namespace morlaine
