#pragma once

#include "Core/Models/TreemapRect.h"

#include <vector>

namespace morlaine::test {

/// The layout once more, as plainly as it can be said: it recurses, copies lists and goes through a whole row again for
/// each item that might join it.
[[nodiscard]] std::vector<TreemapRect> plainLayout(const FileNode& node, const Rect& rect, std::int64_t maxDepth,
                                                   std::int64_t currentDepth);

} // namespace morlaine::test
