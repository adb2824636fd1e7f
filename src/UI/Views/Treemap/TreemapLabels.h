#pragma once

class QImage;

namespace morlaine {
class TreemapLayout;
} // namespace morlaine

/// Paints names and sizes of files into a treemap's picture. Main thread only.
namespace morlaine::TreemapLabels {

/// Call it after all rectangles are painted, so that none covers a label. A soft shadow makes labels readable on light
/// colours. Throws std::bad_alloc.
void paint(QImage& image, const TreemapLayout& layout);

} // namespace morlaine::TreemapLabels
