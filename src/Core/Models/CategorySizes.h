#pragma once

#include "Utilities/FileCategory.h"

#include <array>
#include <cstdint>

namespace morlaine {

class FileNode;

/// Bytes by category, in the order of `FileCategory::allCases`.
using CategorySizes = std::array<std::int64_t, FileCategory::allCases.size()>;

/// The sizes of all files of a tree by category. A folder counts through its children only; a file counts with its own
/// size, even if it has a list. A sum beyond 64 bits ends the program. Constant time for the root of a tree, one pass
/// for an inner node. Any thread.
[[nodiscard]] CategorySizes categorySizes(const FileNode& root);

/// Adds the sizes of one more tree to `dict`.
void sumCategorySizes(const FileNode& node, CategorySizes& dict);

} // namespace morlaine
