#include "UI/Views/Search/SearchPlaceholder.h"

#include "UI/Styles/StyledLabel.h"
#include "UI/Widgets/Scrollable.h"
#include "UI/Widgets/SymbolImage.h"

#include <QVBoxLayout>

namespace morlaine {

namespace {

constexpr int symbolSide = 28;
constexpr int spacing = 4;
constexpr int margin = 8;

void addLine(QVBoxLayout& column, const QString& text, TextStyle style, Theme::SystemColor color)
{
    auto* label = new StyledLabel(style, color);
    label->setText(text);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignHCenter);
    column.addWidget(label);
}

} // namespace

SearchPlaceholder::SearchPlaceholder(SymbolName symbol, const QString& headline, const QString& captionOrNone,
                                     QWidget* parent)
    : QScrollArea(parent)
    , m_symbol(new SymbolImage(symbol, symbolSide, &Theme::quietPicture))
{
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(2 * margin, 0, 2 * margin, 0);
    column->setSpacing(spacing);
    column->addStretch();
    column->addWidget(m_symbol, 0, Qt::AlignHCenter);
    addLine(*column, headline, TextStyle::headline, &Theme::textSecondary);
    if (!captionOrNone.isEmpty()) {
        addLine(*column, captionOrNone, TextStyle::caption, &Theme::textTertiary);
    }
    column->addStretch();
    makeScrollable(*this, content);
}

QSize SearchPlaceholder::minimumSizeHint() const
{
    return {0, 0};
}

void SearchPlaceholder::resizeEvent(QResizeEvent* event)
{
    const QSize room = maximumViewportSize();
    const int symbol = m_symbol->sizeHint().height() + spacing;
    const int content = widget()->layout()->totalHeightForWidth(room.width());
    const int texts = content - (m_symbol->isHidden() ? 0 : symbol);
    m_symbol->setVisible(texts + symbol <= room.height());
    QScrollArea::resizeEvent(event);
}

} // namespace morlaine
