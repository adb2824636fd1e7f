#include "UI/Styles/TextDirectionStyle.h"

#include <QPainter>

namespace morlaine {

void TextDirectionStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette,
                                      bool isEnabled, const QString& text, QPalette::ColorRole role) const
{
    constexpr int directions = Qt::TextForceLeftToRight | Qt::TextForceRightToLeft;
    const Qt::Alignment place =
        visualAlignment(painter->layoutDirection(), Qt::Alignment(flags & Qt::AlignHorizontal_Mask));
    const int kept = flags & ~(directions | static_cast<int>(Qt::AlignHorizontal_Mask));
    const int direction = text.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
    QProxyStyle::drawItemText(painter, rect, kept | static_cast<int>(place) | direction, palette, isEnabled, text,
                              role);
}

} // namespace morlaine
