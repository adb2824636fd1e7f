#include "Core/Models/CategorySizes.h"

#include "Core/Models/FileNode.h"
#include "Utilities/CheckedMath.h"

#include <cstdlib>

namespace morlaine {

CategorySizes categorySizes(const FileNode& root)
{
    const std::optional<CategorySizes> sizes = root.tree().categorySizes(root.position());
    if (!sizes) {
        std::abort(); // like every sum beyond 64 bits
    }
    return *sizes;
}

void sumCategorySizes(const FileNode& node, CategorySizes& dict)
{
    const CategorySizes sizes = categorySizes(node);
    for (std::size_t category = 0; category < dict.size(); ++category) {
        dict[category] = checkedAdd(dict[category], sizes[category]);
    }
}

} // namespace morlaine
