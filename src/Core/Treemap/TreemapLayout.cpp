#include "Core/Treemap/TreemapLayout.h"

#include <algorithm>

namespace morlaine {

namespace {

bool contains(const Rect& rect, double x, double y)
{
    return x >= rect.x && x < rect.x + rect.width && y >= rect.y && y < rect.y + rect.height;
}

bool contains(const TreemapLayout::Bounds& bounds, double x, double y)
{
    return x >= bounds.left && x < bounds.right && y >= bounds.top && y < bounds.bottom;
}

} // namespace

void TreemapLayout::restart(const FileNode& folder)
{
    clear();
    m_folder = folder;
}

void TreemapLayout::clear()
{
    m_folder.reset();
    m_items.resize(0);
    m_blocks.resize(0);
    m_closedFolders.resize(0);
}

TreemapRect TreemapLayout::operator[](std::size_t index) const
{
    const Item& item = m_items[index];
    return {FileNode::at(tree(), item.node), item.rect, FileCategory(item.category()).color(), item.depth()};
}

std::span<const TreemapLayout::Item> TreemapLayout::itemsOfBlock(std::size_t block) const noexcept
{
    const std::size_t first = block * blockSize;
    return items().subspan(first, std::min(blockSize, size() - first));
}

std::optional<std::size_t> TreemapLayout::hitTest(double x, double y) const noexcept
{
    std::optional<std::size_t> folder;
    for (std::size_t block = 0; block < m_blocks.size(); ++block) {
        if (!contains(m_blocks[block], x, y)) {
            continue;
        }
        for (const Item& item : itemsOfBlock(block)) {
            if (!contains(item.rect, x, y)) {
                continue;
            }
            const auto index = static_cast<std::size_t>(&item - m_items.begin());
            if (!item.isFolder()) {
                return index;
            }
            if (!folder) {
                folder = index;
            }
        }
    }
    return folder;
}

std::optional<std::size_t> TreemapLayout::innermostAt(double x, double y) const noexcept
{
    for (std::size_t block = m_blocks.size(); block-- > 0;) {
        if (contains(m_blocks[block], x, y)) {
            const std::span<const Item> inBlock = itemsOfBlock(block);
            for (std::size_t index = inBlock.size(); index-- > 0;) {
                if (contains(inBlock[index].rect, x, y)) {
                    return block * blockSize + index;
                }
            }
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> TreemapLayout::indexOf(const FileNode& node) const noexcept
{
    if (empty()) {
        return std::nullopt;
    }
    // Positions in the tree ascend with the index.
    if (&node.tree() == &tree() && tree().repeatedIds().empty()) {
        const auto found = std::ranges::lower_bound(items(), node.position(), {}, &Item::node);
        return found != items().end() && found->node == node.position()
                   ? std::optional(static_cast<std::size_t>(found - items().begin()))
                   : std::nullopt;
    }
    const auto found =
        std::ranges::find(items(), node.id(), [this](const Item& item) { return tree().idOf(item.node); });
    return found != items().end() ? std::optional(static_cast<std::size_t>(found - items().begin())) : std::nullopt;
}

} // namespace morlaine
