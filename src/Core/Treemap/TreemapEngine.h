#pragma once

#include "Core/Models/FileNode.h"
#include "Core/Models/TreemapRect.h"
#include "Core/Treemap/TreemapLayout.h"
#include "Utilities/Rect.h"

#include <cstdint>
#include <vector>

/// The squarified layout of a folder. A pure function: equal input gives equal doubles on every machine. Any thread.
namespace morlaine::TreemapEngine {

/// Divides `rect` among the children of `node`, in proportion to their sizes and in their order. Divides the rectangle
/// of each folder, less a margin, among its children in turn, as long as there is room and `maxDepth` is not reached.
/// `currentDepth` is the depth of the first level.
///
/// Each rectangle comes before the ones nested in it, and these before its next sibling. A child gets no rectangle if
/// its size is not positive, or if rounding has left no room at the end of its level. The result is empty for a node
/// without children and for a rectangle whose width or height is not positive. A sum of sizes beyond 64 bits ends the
/// program.
///
/// The time is proportional to the number of children that are laid out. Does not recurse.
[[nodiscard]] std::vector<TreemapRect> computeLayout(const FileNode& node, const Rect& rect, std::int64_t maxDepth = 4,
                                                     std::int64_t currentDepth = 0);

/// The same into `layout`, whose memory is reused. Depths begin at 0.
void layOut(const FileNode& node, const Rect& rect, TreemapLayout& layout, std::int64_t maxDepth = 4,
            std::int64_t currentDepth = 0);

} // namespace morlaine::TreemapEngine
