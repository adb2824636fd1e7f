#pragma once

#include "Core/Models/FileNode.h"
#include "Utilities/Color.h"
#include "Utilities/Rect.h"

#include <cstdint>

namespace morlaine {

/// One rectangle of a treemap and the node that it stands for.
struct TreemapRect {
    FileNode node;
    Rect rect;              // in the coordinates of the whole treemap
    Color color;            // of the node's category
    std::int64_t depth = 0; // 0 for the children of the folder that was laid out, 1 for theirs, and so on

    /// The node's id: rectangles of the same node are the same item in every layout.
    [[nodiscard]] const Uuid& id() const noexcept { return node.id(); }
};

} // namespace morlaine
