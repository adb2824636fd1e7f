#include "UI/Widgets/RowPainting.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace morlaine {

namespace {

/// More characters than fit into any line. Eliding the path of a very deep folder would take long.
constexpr qsizetype mostCharacters = 2000;

QString cutForEliding(const QString& text, Qt::TextElideMode elide)
{
    if (text.size() <= mostCharacters) {
        return text;
    }
    switch (elide) {
    case Qt::ElideLeft:
        return text.right(mostCharacters);
    case Qt::ElideMiddle:
        return text.left(mostCharacters / 2) + text.right(mostCharacters / 2);
    default:
        return text.left(mostCharacters);
    }
}

} // namespace

void paintLine(QPainter& painter, const QRect& rect, const QString& text, const QFont& font, const QColor& color,
               Qt::TextElideMode elide, Qt::Alignment alignment)
{
    painter.setFont(font);
    painter.setPen(color);
    constexpr int flags = Qt::TextSingleLine | Qt::TextDontClip | Qt::AlignVCenter;
    // The text's own direction: numbers and paths stay readable in a window that is read from right to left.
    const int direction = text.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
    painter.drawText(
        rect, flags | direction | static_cast<int>(QStyle::visualAlignment(painter.layoutDirection(), alignment)),
        QFontMetrics(font).elidedText(cutForEliding(text, elide), elide, rect.width(), Qt::TextSingleLine));
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
