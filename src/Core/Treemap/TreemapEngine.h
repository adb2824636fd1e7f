#pragma once

#include "Core/Models/FileNode.h"
#include "Core/Models/TreemapRect.h"
#include "Core/Treemap/TreemapLayout.h"
#include "Utilities/Rect.h"

#include <cstdint>
#include <vector>

/// The squarified layout of a folder. Pure: the same node and rectangle give the same doubles everywhere. Any thread.
namespace morlaine::TreemapEngine {

/// Divides `rect` among the children of `node` in proportion to their sizes and in their order, and the rectangle of
/// each folder, a margin less, among that folder's children, as long as there is room and `maxDepth` is not reached.
/// `currentDepth` is the depth of the first level.
///
/// Each rectangle comes before those nested in it and these before its next sibling. A child without a positive size
/// gets none; nor does one for which rounding has left no room at the end of its level. Nothing at all comes of a node
/// without children and of a rectangle whose width or height is not positive. Sizes of one folder that add up to more
/// than 64 bits end the program.
///
/// Takes time in proportion to the children that are laid out, whatever their sizes. Does not recurse.
[[nodiscard]] std::vector<TreemapRect> computeLayout(const FileNode& node, const Rect& rect, std::int64_t maxDepth = 4,
                                                     std::int64_t currentDepth = 0);

/// The same into a layout, whose memory is used again. Depths in it begin at 0.
void layOut(const FileNode& node, const Rect& rect, TreemapLayout& layout, std::int64_t maxDepth = 4,
            std::int64_t currentDepth = 0);

} // namespace morlaine::TreemapEngine
