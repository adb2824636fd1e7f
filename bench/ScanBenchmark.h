#pragma once

#include "Core/Models/FileNode.h"

#include <cstdint>
#include <string>

namespace morlaine::bench {

/// The tree at the path `tree`, walked on this thread.
[[nodiscard]] FileNode scan(const std::string& tree);

[[nodiscard]] std::int64_t nodesIn(const FileNode& root);

/// Scans of the folder `tree`, one beside `du -sx` and one for memory.
void registerScanBenchmarks(const std::string& tree);

} // namespace morlaine::bench
