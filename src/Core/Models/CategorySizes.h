#pragma once

#include "Utilities/FileCategory.h"

#include <array>
#include <cstdint>

namespace morlaine {

class FileNode;

/// Bytes for each category, indexed by the category itself, in the order of `FileCategory::allCases`.
using CategorySizes = std::array<std::int64_t, FileCategory::allCases.size()>;

/// The sizes of all files of a tree by category. A folder's own size does not count, and one without a list adds
/// nothing; whatever is no folder counts with its own size alone. A sum beyond 64 bits ends the program. Costs nothing
/// for the root of a tree, one pass for a part of it. Any thread.
[[nodiscard]] CategorySizes categorySizes(const FileNode& root);

/// Adds those of one more tree to `dict`.
void sumCategorySizes(const FileNode& node, CategorySizes& dict);

} // namespace morlaine
