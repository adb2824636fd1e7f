#pragma once

#include "Core/Models/TreemapRect.h"

#include <vector>

namespace morlaine::test {

/// The simplest layout: recurses, copies lists, and measures the whole row again for each item that might join it.
[[nodiscard]] std::vector<TreemapRect> plainLayout(const FileNode& node, const Rect& rect, std::int64_t maxDepth,
                                                   std::int64_t currentDepth);

} // namespace morlaine::test
