#pragma once

#include "Core/Models/FileNode.h"

#include <filesystem>

namespace morlaine::bench {

/// Makes a tree of 200,000 sparse files in `folder`, the same at every call: folders of very different widths, nested
/// up to a dozen deep, with names of about twenty bytes. A tree that an earlier run finished there is used again.
void makeGeneratedTree(const std::filesystem::path& folder);

/// A tree in memory of about `nodes` nodes with folders and names of the same kind.
[[nodiscard]] FileNode generatedTree(int nodes);

} // namespace morlaine::bench
