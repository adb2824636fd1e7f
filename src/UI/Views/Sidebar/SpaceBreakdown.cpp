#include "UI/Views/Sidebar/SpaceBreakdown.h"

#include "Core/Models/CategorySizes.h"

namespace morlaine {

std::int64_t sizeOfCategory(FileCategory category, const FileNode& node)
{
    std::int64_t size = 0;
    calculateCategorySize(node, category, size);
    return size;
}

void calculateCategorySize(const FileNode& node, FileCategory category, std::int64_t& size)
{
    CategorySizes sizes{};
    sizes[category] = size;
    sumCategorySizes(node, sizes);
    size = sizes[category];
}

std::vector<CategoryShare> spaceBreakdown(const FileNode& root)
{
    const CategorySizes sizes = categorySizes(root);
    std::vector<CategoryShare> shares;
    for (const FileCategory category : FileCategory::allCases) {
        if (sizes[category] >= 1) {
            shares.push_back({category, sizes[category]});
        }
    }
    return shares;
}

} // namespace morlaine
