#pragma once

#include "Core/Models/FileNode.h"

#include <cstdint>
#include <vector>

namespace morlaine {

/// The sizes of all files of that category in a tree. Checked for overflow.
[[nodiscard]] std::int64_t sizeOfCategory(FileCategory category, const FileNode& node);

/// Adds them to `size`.
void calculateCategorySize(const FileNode& node, FileCategory category, std::int64_t& size);

/// The size of one category in a tree.
struct CategoryShare {
    FileCategory category;
    std::int64_t size = 0; // bytes, at least 1

    friend bool operator==(const CategoryShare&, const CategoryShare&) = default;
};

/// The categories with files, in their order. Passes over the tree once.
[[nodiscard]] std::vector<CategoryShare> spaceBreakdown(const FileNode& root);

} // namespace morlaine
