#include "UI/Views/Treemap/TreemapMenu.h"

#include "UI/Styles/TextStyles.h"
#include "UI/Views/State/MainViewModel.h"
#include "Utilities/ShownText.h"

#include <QAction>

#include <utility>

namespace morlaine {

using Kind = TreemapMenuEntry::Kind;

std::vector<TreemapMenuEntry> treemapMenuEntries(const std::optional<FileNode>& target)
{
    if (!target) {
        return {{Kind::text, QStringLiteral("No element selected")}};
    }
    std::vector<TreemapMenuEntry> entries{{Kind::title, shownText(target->name())}, {Kind::separator, {}}};
    if (target->isDirectory()) {
        entries.push_back({Kind::zoomIn, QStringLiteral("Zoom In")});
    }
    entries.push_back({Kind::reveal, QStringLiteral("Reveal in Finder")});
    entries.push_back({Kind::open, QStringLiteral("Open File / Folder")});
    entries.push_back({Kind::copyPath, QStringLiteral("Copy Path")});
    return entries;
}

TreemapMenu::TreemapMenu(MainViewModel& viewModel, std::optional<FileNode> target, QWidget* parent)
    : QMenu(parent)
    , m_viewModel(viewModel)
    , m_target(std::move(target))
{
    setAttribute(Qt::WA_DeleteOnClose);
    showTextsLikeEntries();
    for (const TreemapMenuEntry& entry : treemapMenuEntries(m_target)) {
        add(entry);
    }
}

/// They cannot be chosen, but have to be read.
void TreemapMenu::showTextsLikeEntries()
{
    QPalette readable = palette();
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        readable.setColor(QPalette::Disabled, role, readable.color(QPalette::Active, role));
    }
    readable.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent); // some styles engrave what is disabled
    setPalette(readable);
}

void TreemapMenu::add(const TreemapMenuEntry& entry)
{
    switch (entry.kind) {
    case Kind::separator:
        addSeparator();
        break;
    case Kind::text:
    case Kind::title:
        addText(entry.text, entry.kind == Kind::title);
        break;
    default:
        addAction(entry.text, this, [this, kind = entry.kind] { run(kind); });
    }
}

/// A name may be long and may hold what menus take for the mark of a mnemonic.
void TreemapMenu::addText(const QString& text, bool isTitle)
{
    constexpr int most = 320;
    const QFont font = isTitle ? TextStyles::font(TextStyle::headline) : this->font();
    QString label = QFontMetrics(font).elidedText(text, Qt::ElideMiddle, most);
    QAction* const action = addAction(label.replace(QLatin1Char('&'), QLatin1StringView("&&")));
    action->setFont(font);
    action->setEnabled(false);
}

void TreemapMenu::run(Kind kind)
{
    const FileNode target = *m_target;
    if (kind == Kind::zoomIn) {
        m_viewModel.zoomIn(target);
        return;
    }
    m_viewModel.setSelectedNode(target);
    if (kind == Kind::reveal) {
        m_viewModel.revealInFinder(target);
    } else if (kind == Kind::open) {
        m_viewModel.openFile(target);
    } else {
        m_viewModel.copyPathToClipboard(target);
    }
}

} // namespace morlaine
