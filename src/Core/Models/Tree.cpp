#include "Core/Models/Tree.h"

namespace morlaine {

Tree::Tree(TreeArrays&& nodes)
    : m_nodes(std::move(nodes))
    , m_lowerNames(m_nodes)
    , m_categorySizes(sumOfFiles(0))
    , m_counts(countsInside(0))
{
}

FileUrl Tree::urlOf(Position node) const
{
    return FileUrl::fromPath(m_nodes.location(node));
}

std::optional<CategorySizes> Tree::categorySizes(Position node) const
{
    return node == 0 ? m_categorySizes : sumOfFiles(node);
}

/// The children of a file, which only a foreign tree can have, are not counted.
std::optional<CategorySizes> Tree::sumOfFiles(Position node) const
{
    CategorySizes sums{};
    bool isTooLarge = false;
    for (const Position end = endOf(node); node < end;) {
        if (isDirectory(node)) {
            ++node;
            continue;
        }
        std::int64_t& sum = sums[categoryOf(node)];
        isTooLarge = __builtin_add_overflow(sum, sizeOf(node), &sum) || isTooLarge;
        node = endOf(node);
    }
    return isTooLarge ? std::nullopt : std::optional(sums);
}

std::pair<std::int64_t, std::int64_t> Tree::countsInside(Position node) const noexcept
{
    std::int64_t files = 0;
    std::int64_t folders = 0;
    for (const Position end = endOf(node); node < end;) {
        const bool isFolder = isDirectory(node);
        folders += isFolder ? 1 : 0;
        files += isFolder ? 0 : 1;
        node = isFolder ? node + 1 : endOf(node);
    }
    return {files, folders};
}

} // namespace morlaine
