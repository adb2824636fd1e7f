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

/// From a layout to what is seen of it. Main thread only.
namespace morlaine::TreemapPainter {

/// What the base picture depends on, besides the application's font.
struct Scene {
    std::shared_ptr<const TreemapLayout> layout;
    NodeIDSet highlightIDs;
    QColor ground; // behind the rectangles
    QSize size;    // points
    double devicePixelRatio = 1;
    std::shared_ptr<const FolderGrounds> grounds{}; // of the layout; without it closed folders show the ground
};

/// All rectangles, without labels: deeper ones over those around them. Throws std::bad_alloc.
[[nodiscard]] QImage paintRects(const Scene& scene);

/// The same with labels, without selection and pointer, at the resolution of the screen. Null where
/// memory does not suffice.
[[nodiscard]] QPixmap paintBase(const Scene& scene);

/// Marks over the base picture.
void paintSelection(QPainter& painter, const Rect& rect, const QColor& accent);
void paintHover(QPainter& painter, const Rect& rect);

/// The points that a mark on that rectangle may touch.
[[nodiscard]] QRect reachOfMark(const Rect& rect);

/// A dark neutral colour in light and dark appearance alike: the outlines of folders are white, and dimmed files have
/// to recede rather than to glare.
[[nodiscard]] QColor ground(const QPalette& palette);

} // namespace morlaine::TreemapPainter
