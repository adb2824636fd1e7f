#include "UI/Views/Sidebar/RecentScanDelegate.h"

#include "UI/Styles/Symbols.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Views/Sidebar/RecentScansModel.h"
#include "UI/Views/Sidebar/SidebarMetrics.h"
#include "UI/Widgets/RowPainting.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace morlaine {

namespace {

constexpr int verticalPadding = 4;
constexpr int lineSpacing = 2;
constexpr int itemSpacing = 4;
constexpr int gap = 8;
constexpr int leastTrashSide = 10;
constexpr int trashReach = 6; // around the picture

QFont nameFont()
{
    return TextStyles::font(TextStyle::body, QFont::Medium);
}

QFont captionFont()
{
    return TextStyles::font(TextStyle::caption);
}

int heightOf(const QFont& font)
{
    return QFontMetrics(font).height();
}

void paintCaption(QPainter& painter, QRect line, const QRect& rowRect, const RecentScansModel::Row& row,
                  const QPalette& palette)
{
    const auto mirrored = [&] { return QStyle::visualRect(painter.layoutDirection(), rowRect, line); };
    const QFont font = captionFont();
    const QColor tertiary = Theme::textTertiary(palette);
    const QString bullet = QStringLiteral("•");
    paintLine(painter, mirrored(), row.size, font, Theme::textSecondary(palette), Qt::ElideRight);
    line.setLeft(line.left() + lineWidth(row.size, font) + itemSpacing);
    paintLine(painter, mirrored(), bullet, font, tertiary, Qt::ElideRight);
    line.setLeft(line.left() + lineWidth(bullet, font) + itemSpacing);
    paintLine(painter, mirrored(), row.date, font, tertiary, Qt::ElideRight);
}

} // namespace

RecentScanDelegate::RecentScanDelegate(const RecentScansModel& model, QObject* parent)
    : QAbstractItemDelegate(parent)
    , m_model(model)
{
}

QRect RecentScanDelegate::trashRect(const QRect& rowRect, Qt::LayoutDirection direction)
{
    const int trashSide = Symbols::grown(leastTrashSide);
    const int left = rowRect.right() + 1 - SidebarMetrics::margin - trashSide;
    const int top = rowRect.top() + (rowRect.height() - trashSide) / 2;
    const QRect trash(left, top, trashSide, trashSide);
    return QStyle::visualRect(direction, rowRect, trash.adjusted(-trashReach, -trashReach, trashReach, trashReach));
}

QSize RecentScanDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const
{
    return {0, 2 * verticalPadding + heightOf(nameFont()) + lineSpacing + heightOf(captionFont())};
}

void RecentScanDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const RecentScansModel::Row& row = m_model.row(index.row());
    const QPalette palette = rowPalette(option);
    const QRect trash = trashRect(option.rect, option.direction);
    QRect line = option.rect.adjusted(SidebarMetrics::margin, verticalPadding, 0, 0);
    line.setRight(trashRect(option.rect, Qt::LeftToRight).left() + trashReach - gap);
    line.setHeight(heightOf(nameFont()));
    paintLine(*painter, QStyle::visualRect(option.direction, option.rect, line), row.name, nameFont(),
              Theme::textPrimary(palette), Qt::ElideMiddle);
    line.moveTop(line.bottom() + 1 + lineSpacing);
    line.setHeight(heightOf(captionFont()));
    paintCaption(*painter, line, option.rect, row, palette);
    const bool isHot = index.row() == m_rowWithHotTrash;
    Symbols::paint(*painter, trash.adjusted(trashReach, trashReach, -trashReach, -trashReach), "trash",
                   isHot ? Theme::textPrimary(palette) : Theme::textSecondary(palette));
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        paintFocusRing(*painter, option.rect.adjusted(SidebarMetrics::inset, 0, -SidebarMetrics::inset, 0), palette);
    }
}

} // namespace morlaine
