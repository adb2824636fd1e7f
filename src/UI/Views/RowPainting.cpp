#include "UI/Views/RowPainting.h"

#include <QFontMetrics>
#include <QPainter>

namespace morlaine {

void paintLine(QPainter& painter, const QRect& rect, const QString& text, const QFont& font, const QColor& color,
               Qt::TextElideMode elide, Qt::Alignment alignment)
{
    painter.setFont(font);
    painter.setPen(color);
    constexpr int flags = Qt::TextSingleLine | Qt::TextDontClip | Qt::AlignVCenter;
    painter.drawText(rect, flags | static_cast<int>(alignment),
                     QFontMetrics(font).elidedText(text, elide, rect.width(), Qt::TextSingleLine));
}

void paintFocusRing(QPainter& painter, const QRect& rect, const QPalette& palette)
{
    constexpr double width = 2;
    const QRectF inside = QRectF(rect).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette.color(QPalette::Highlight), width));
    painter.drawRoundedRect(inside, Theme::cornerRadiusSmall, Theme::cornerRadiusSmall);
    painter.restore();
}

int lineWidth(const QString& text, const QFont& font)
{
    return QFontMetrics(font).horizontalAdvance(text) + 1;
}

QPalette rowPalette(const QStyleOptionViewItem& option)
{
    QPalette palette = option.palette;
    if (!option.state.testFlag(QStyle::State_Enabled)) {
        palette.setCurrentColorGroup(QPalette::Disabled);
    } else {
        palette.setCurrentColorGroup(option.state.testFlag(QStyle::State_Active) ? QPalette::Active
                                                                                 : QPalette::Inactive);
    }
    return palette;
}

} // namespace morlaine
