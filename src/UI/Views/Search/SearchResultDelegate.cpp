#include "UI/Views/Search/SearchResultDelegate.h"

#include "UI/Styles/Symbols.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Views/Search/SearchFilterContent.h"
#include "UI/Views/Search/SearchResultsModel.h"
#include "UI/Widgets/RowPainting.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace morlaine {

namespace {

constexpr int inset = 6; // between a row and the edges of the list
constexpr int padding = 8;
constexpr int verticalPadding = 4;
constexpr int lineSpacing = 2;
constexpr int iconSide = 14;
constexpr int gap = 8;
constexpr int leastLetters = 10; // of a name beside a size

QFont nameFont()
{
    return TextStyles::font(TextStyle::subheadline, QFont::DemiBold);
}

QFont pathFont()
{
    return TextStyles::font(TextStyle::caption);
}

QFont sizeFont()
{
    return TextStyles::systemFont(11, QFont::Medium);
}

int heightOf(const QFont& font)
{
    return QFontMetrics(font).height();
}

struct RowColors {
    QColor icon;
    QColor name;
    QColor detail;
};

/// The selected row is highlighted strongly while the list has the focus.
RowColors colorsOf(const SearchResultRow& row, const QPalette& palette, bool isEmphasized)
{
    if (isEmphasized) {
        const QColor text = palette.color(QPalette::HighlightedText);
        return {text, text, text};
    }
    return {row.iconColor, palette.color(QPalette::Text), Theme::textSecondary(palette)};
}

void paintSelection(QPainter& painter, const QRect& rect, const QColor& color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rect, Theme::cornerRadiusSmall, Theme::cornerRadiusSmall);
    painter.restore();
}

/// In a narrow row the size is beside the path, so that the name has room.
void paintTexts(QPainter& painter, const QRect& area, const QRect& frame, const SearchResultRow& row,
                const RowColors& colors)
{
    const auto mirrored = [&](const QRect& rect) { return QStyle::visualRect(painter.layoutDirection(), frame, rect); };
    const int widthOfSize = lineWidth(row.size, sizeFont()) + gap;
    const bool isNarrow = area.width() - widthOfSize < QFontMetrics(nameFont()).averageCharWidth() * leastLetters;
    QRect nameLine(area.left(), area.top() + verticalPadding, area.width(), heightOf(nameFont()));
    QRect pathLine(area.left(), nameLine.bottom() + 1 + lineSpacing, area.width(), heightOf(pathFont()));
    paintLine(painter, mirrored(isNarrow ? pathLine : area), row.size, sizeFont(), colors.detail, Qt::ElideNone,
              Qt::AlignTrailing);
    pathLine.setWidth(area.width() - widthOfSize);
    nameLine.setWidth(isNarrow ? area.width() : pathLine.width());
    paintLine(painter, mirrored(nameLine), row.name, nameFont(), colors.name, Qt::ElideMiddle);
    paintLine(painter, mirrored(pathLine), row.path, pathFont(), colors.detail, Qt::ElideLeft);
}

} // namespace

SearchResultDelegate::SearchResultDelegate(const SearchResultsModel& model, QObject* parent)
    : QAbstractItemDelegate(parent)
    , m_model(model)
{
}

QSize SearchResultDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const
{
    return {0, 2 * verticalPadding + heightOf(nameFont()) + lineSpacing + heightOf(pathFont())};
}

void SearchResultDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const SearchResultRow row = searchResultRow(m_model.result(index.row()));
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
    const QPalette palette = rowPalette(option);
    const RowColors colors = colorsOf(row, palette, isSelected && hasFocus);
    const QRect frame = option.rect.adjusted(inset, 0, -inset, 0);
    if (isSelected) {
        paintSelection(*painter, frame, hasFocus ? palette.color(QPalette::Highlight) : Theme::mutedSelection(palette));
    } else if (hasFocus) {
        paintFocusRing(*painter, frame, palette);
    }
    const QRect area = frame.adjusted(padding, 0, -padding, 0);
    const int side = Symbols::grown(iconSide);
    const QRect icon(area.left(), area.top(), side, area.height());
    Symbols::paint(*painter, QStyle::visualRect(option.direction, frame, icon),
                   row.isDirectory ? SymbolName("folder.fill") : SymbolName("doc.fill"), colors.icon);
    paintTexts(*painter, area.adjusted(side + gap, 0, 0, 0), frame, row, colors);
}

} // namespace morlaine
