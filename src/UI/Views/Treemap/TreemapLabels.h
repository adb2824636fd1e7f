#pragma once

class QImage;

namespace morlaine {
class TreemapLayout;
} // namespace morlaine

/// The names and sizes of files in a treemap's picture. Main thread only.
namespace morlaine::TreemapLabels {

/// After all rectangles: none is painted over the labels of another. A soft shadow lies below them, so that they are
/// read on light colours too. Throws std::bad_alloc.
void paint(QImage& image, const TreemapLayout& layout);

} // namespace morlaine::TreemapLabels
