#include "UI/Views/Chart/DonutSliceShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace morlaine {

namespace {

QRectF circleAround(const QPointF& centre, double radius)
{
    return {centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius};
}

} // namespace

QPainterPath DonutSliceShape::path(const QRectF& rect) const
{
    const QPointF centre = rect.center();
    const double outer = std::min(rect.width(), rect.height()) / 2;
    const double inner = std::max(outer - thickness, 0.0);
    const double sweep = std::clamp(endAngle - startAngle, 0.0, 2 * std::numbers::pi);

    // QPainter counts degrees counterclockwise.
    constexpr double degrees = 180 / std::numbers::pi;
    const double from = -startAngle * degrees;
    const double turn = -sweep * degrees;
    QPainterPath outline;
    outline.arcMoveTo(circleAround(centre, outer), from);
    outline.arcTo(circleAround(centre, outer), from, turn);
    outline.arcTo(circleAround(centre, inner), from + turn, -turn);
    outline.closeSubpath();
    return outline;
}

} // namespace morlaine
