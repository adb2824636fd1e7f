#pragma once

#include "Core/Models/FileNode.h"

#include <cstdint>
#include <vector>

namespace morlaine {

/// The bytes of all files of that category in a tree; folders add nothing of their own. Checked.
[[nodiscard]] std::int64_t sizeOfCategory(FileCategory category, const FileNode& node);

/// Adds them to `size`.
void calculateCategorySize(const FileNode& node, FileCategory category, std::int64_t& size);

/// How much of a tree falls to one category.
struct CategoryShare {
    FileCategory category;
    std::int64_t size = 0; // bytes, at least 1

    friend bool operator==(const CategoryShare&, const CategoryShare&) = default;
};

/// The categories that hold anything, in their order. One pass over the tree for all of them.
[[nodiscard]] std::vector<CategoryShare> spaceBreakdown(const FileNode& root);

} // namespace morlaine
