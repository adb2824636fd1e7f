#include "UI/Views/Treemap/FolderGrounds.h"

#include "UI/Styles/Conversions.h"

#include <algorithm>

namespace morlaine {

namespace {

static_assert(TreemapLayout::blockSize == 64, "a bit of a whole number for each item of a block");

std::optional<QRgb> mixedColor(const Tree& tree, Tree::Position folder)
{
    const std::optional<CategorySizes> sizes = tree.categorySizes(folder);
    if (!sizes) {
        return std::nullopt;
    }
    Color sum;
    double total = 0;
    for (const FileCategory category : FileCategory::allCases) {
        const Color color = category.color();
        const auto size = static_cast<double>(std::max<std::int64_t>((*sizes)[category], 0));
        sum.red += color.red * size;
        sum.green += color.green * size;
        sum.blue += color.blue * size;
        total += size;
    }
    if (total == 0) {
        return std::nullopt;
    }
    return toQColor({sum.red / total, sum.green / total, sum.blue / total}).rgb();
}

} // namespace

FolderGrounds::FolderGrounds(const TreemapLayout& layout, const FolderGrounds* former)
    : m_blocks(layout.blocks().size())
{
    const std::span<const TreemapLayout::Item> items = layout.items();
    if (items.empty()) {
        return;
    }
    m_root = FileNode::at(layout.tree(), 0);
    std::span<const Ground> known;
    if (former != nullptr && former->isOf(layout.tree())) {
        known = former->m_grounds;
    }
    const auto addFolder = [&](std::size_t index) {
        const Tree::Position node = items[index].node;
        const auto passed = std::ranges::find_if(known, [node](const Ground& ground) { return ground.node >= node; });
        known = known.subspan(static_cast<std::size_t>(passed - known.begin()));
        if (!known.empty() && known.front().node == node) {
            add(index, known.front());
        } else if (const std::optional<QRgb> color = mixedColor(layout.tree(), node)) {
            add(index, {node, *color});
        }
    };
    std::ranges::for_each(layout.closedFolders(), addFolder);
    if (items.back().isFolder()) {
        addFolder(items.size() - 1);
    }
}

/// Requires ascending indices.
void FolderGrounds::add(std::size_t index, const Ground& ground)
{
    Block& block = m_blocks[index / TreemapLayout::blockSize];
    if (block.isClosed == 0) {
        block.first = m_grounds.size();
    }
    block.isClosed |= std::uint64_t{1} << index % TreemapLayout::blockSize;
    m_grounds.push_back(ground);
}

} // namespace morlaine
