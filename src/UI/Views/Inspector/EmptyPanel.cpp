#include "UI/Views/Inspector/EmptyPanel.h"

#include "UI/Styles/StyledLabel.h"
#include "UI/Widgets/ElidingLabel.h"
#include "UI/Widgets/SymbolImage.h"
#include "Utilities/ShownText.h"

#include <QVBoxLayout>

namespace morlaine {

namespace {

constexpr int iconSide = 48;
constexpr int messageLines = 6;

QLabel* centred(QLabel* label, const QString& text)
{
    label->setText(text);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

} // namespace

EmptyPanel::EmptyPanel(QWidget* parent)
    : QWidget(parent)
    , m_message(new ElidingLabel(TextStyle::caption, Theme::textSecondary, messageLines))
{
    m_message->setAlignment(Qt::AlignHCenter | Qt::AlignTop);

    auto* column = new QVBoxLayout(this);
    constexpr int margin = static_cast<int>(Theme::paddingLarge);
    constexpr int gap = static_cast<int>(Theme::paddingSmall);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(gap);
    column->addStretch();
    column->addWidget(new SymbolImage("chart.pie.fill", iconSide, Theme::quietPicture), 0, Qt::AlignHCenter);
    column->addSpacing(gap);
    column->addWidget(centred(new StyledLabel(TextStyle::headline), QStringLiteral("No item selected")));
    column->addWidget(centred(new StyledLabel(TextStyle::subheadline, Theme::textSecondary),
                              QStringLiteral("Select a folder or hover over the treemap to inspect details here.")));
    column->addSpacing(gap);
    column->addWidget(m_message);
    column->addStretch();
}

void EmptyPanel::setMessage(const std::optional<QString>& message)
{
    m_message->setText(shownText(message.value_or(QString())));
    m_message->setVisible(message.has_value());
}

} // namespace morlaine
