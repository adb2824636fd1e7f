#pragma once

#include "Core/Models/FileNode.h"

#include <optional>

namespace morlaine::bench {

/// Writing a tree of a million nodes to a cache file, and reading it back.
void registerJsonBenchmarks();

/// Writes the tree to a file of the benchmarks as the program caches it. False if that fails.
[[nodiscard]] bool writeCache(const FileNode& root);
/// Reads it back; nothing if that fails.
[[nodiscard]] std::optional<FileNode> readCache();
void removeCache();

} // namespace morlaine::bench
