#include "UI/Views/Search/SearchPlaceholder.h"

#include "UI/Styles/StyledLabel.h"
#include "UI/Widgets/SymbolImage.h"

#include <QVBoxLayout>

namespace morlaine {

namespace {

constexpr int symbolSide = 28;
constexpr int spacing = 4;
constexpr int margin = 8;

StyledLabel* addLine(QVBoxLayout& column, const QString& text, TextStyle style, Theme::SystemColor color)
{
    auto* label = new StyledLabel(style, color);
    label->setText(text);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignHCenter);
    column.addWidget(label);
    return label;
}

} // namespace

SearchPlaceholder::SearchPlaceholder(SymbolName symbol, const QString& headline, const QString& captionOrNone,
                                     QWidget* parent)
    : QWidget(parent)
    , m_symbol(new SymbolImage(symbol, symbolSide, &Theme::quietPicture, this))
{
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetNoConstraint);
    column->setContentsMargins(2 * margin, 0, 2 * margin, 0);
    column->setSpacing(spacing);
    column->addStretch();
    column->addWidget(m_symbol, 0, Qt::AlignHCenter);
    m_text = captionOrNone.isEmpty() ? headline : headline + QLatin1Char('\n') + captionOrNone;
    addLine(*column, headline, TextStyle::headline, &Theme::textSecondary);
    if (!captionOrNone.isEmpty()) {
        addLine(*column, captionOrNone, TextStyle::caption, &Theme::textTertiary);
    }
    column->addStretch();
}

QSize SearchPlaceholder::minimumSizeHint() const
{
    return {0, 0};
}

void SearchPlaceholder::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const bool isShown = !m_symbol->isHidden();
    const int others = layout()->totalHeightForWidth(width()) - (isShown ? symbolSide + spacing : 0);
    m_symbol->setVisible(others + symbolSide + spacing <= height());
    setToolTip(others > height() ? m_text : QString());
}

} // namespace morlaine
