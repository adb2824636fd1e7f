#pragma once

#include <QPainterPath>
#include <QRectF>

namespace morlaine {

/// A sector of a ring. Angles are in radians from three o'clock and grow clockwise on screen; a sweep beyond a full
/// turn is one turn. Shapes have nothing to animate: one layout replaces another at once.
struct DonutSliceShape {
    double startAngle = 0;
    double endAngle = 0;
    double thickness = 0; // points

    /// The outline inside the largest circle around the middle of `rect`: along the outer radius, back along the inner.
    /// A thickness beyond the radius reaches to the middle.
    [[nodiscard]] QPainterPath path(const QRectF& rect) const;
};

} // namespace morlaine
