#pragma once

#include "Utilities/Rect.h"

#include <QColor>
#include <QRect>

class QPainter;

/// The marks of the selected rectangle and of the one under the pointer. Main thread only.
namespace morlaine::TreemapMarks {

/// Paint a mark over the picture of the rectangles.
void paintSelection(QPainter& painter, const Rect& rect, const QColor& accent);
void paintHover(QPainter& painter, const Rect& rect);

/// The area that a mark on that rectangle may touch, in points.
[[nodiscard]] QRect reachOf(const Rect& rect);

} // namespace morlaine::TreemapMarks
