#include "Core/Models/CategorySizes.h"

#include "Utilities/CheckedMath.h"

#include <span>
#include <vector>

namespace morlaine {

CategorySizes categorySizes(const FileNode& root)
{
    CategorySizes sizes{};
    sumCategorySizes(root, sizes);
    return sizes;
}

void sumCategorySizes(const FileNode& node, CategorySizes& dict)
{
    std::vector<std::span<const FileNode>> waiting{{&node, 1}};
    while (!waiting.empty()) {
        const auto nodes = waiting.back();
        waiting.pop_back();
        for (const FileNode& each : nodes) {
            if (each.isDirectory()) {
                waiting.push_back(each.childrenOrNone());
            } else {
                std::int64_t& sum = dict[each.fileCategory()];
                sum = checkedAdd(sum, each.size());
            }
        }
    }
}

} // namespace morlaine
