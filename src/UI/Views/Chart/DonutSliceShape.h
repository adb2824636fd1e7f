#pragma once

#include <QPainterPath>
#include <QRectF>

namespace morlaine {

/// A sector of a ring. Angles are in radians from three o'clock, clockwise on screen; more than a full turn is one
/// turn.
struct DonutSliceShape {
    double startAngle = 0;
    double endAngle = 0;
    double thickness = 0; // points

    /// The outline in the largest circle centred in `rect`: along the outer radius and back along the inner one. A
    /// thickness beyond the radius is cut to the radius.
    [[nodiscard]] QPainterPath path(const QRectF& rect) const;
};

} // namespace morlaine
