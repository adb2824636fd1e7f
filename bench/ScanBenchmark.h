#pragma once

#include "Core/Models/FileNode.h"

#include <cstdint>
#include <string>

namespace morlaine::bench {

/// The tree at the path `tree`, walked on this thread with helpers as the program has them.
[[nodiscard]] FileNode scan(const std::string& tree);

[[nodiscard]] std::int64_t nodesIn(const FileNode& root);

/// Scans of the folder `tree`: for memory, and beside `du -sx` with warm and with cold caches.
void registerScanBenchmarks(const std::string& tree);

} // namespace morlaine::bench
