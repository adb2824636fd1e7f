#pragma once

#include "Core/Models/FileNode.h"

#include <filesystem>

namespace morlaine::bench {

/// Makes a tree of 200,000 sparse files in `folder`, always the same: folders of very different widths, nested up to a
/// dozen deep, with names of about twenty bytes. Reuses a tree that an earlier run has finished.
void makeGeneratedTree(const std::filesystem::path& folder);

/// A similar tree in memory, of about `nodes` nodes.
[[nodiscard]] FileNode generatedTree(int nodes);

} // namespace morlaine::bench
