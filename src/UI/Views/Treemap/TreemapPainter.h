#pragma once

#include "Core/Treemap/TreemapLayout.h"
#include "Services/Search/SearchResults.h"

#include <QColor>
#include <QImage>
#include <QPalette>
#include <QPixmap>
#include <QRect>
#include <QSize>

#include <memory>

class QPainter;

namespace morlaine {
class FolderGrounds;
} // namespace morlaine

/// Paints layouts and marks. Main thread only.
namespace morlaine::TreemapPainter {

/// Everything that the base picture depends on, besides the application's font.
struct Scene {
    std::shared_ptr<const TreemapLayout> layout;
    NodeIDSet highlightIDs;
    QColor ground; // the background colour
    QSize size;    // points
    double devicePixelRatio = 1;
    std::shared_ptr<const FolderGrounds> grounds{}; // of the layout; without it closed folders show the ground
};

/// Paints all rectangles without labels, deeper ones over their folders. Throws std::bad_alloc.
[[nodiscard]] QImage paintRects(const Scene& scene);

/// Paints rectangles and labels, without marks, at the resolution of the screen. Null if memory runs out.
[[nodiscard]] QPixmap paintBase(const Scene& scene);

/// Paint a mark over the base picture.
void paintSelection(QPainter& painter, const Rect& rect, const QColor& accent);
void paintHover(QPainter& painter, const Rect& rect);

/// The area that a mark on that rectangle may touch, in points.
[[nodiscard]] QRect reachOfMark(const Rect& rect);

/// The background: dark in light and dark appearance alike, since outlines of folders are white and dimmed files must
/// not stand out.
[[nodiscard]] QColor ground(const QPalette& palette);

} // namespace morlaine::TreemapPainter
