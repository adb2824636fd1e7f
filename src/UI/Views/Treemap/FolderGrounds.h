#pragma once

#include "Core/Treemap/TreemapLayout.h"

#include <QColor>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace morlaine {

/// What the closed folders of a layout hold, as a colour: those of which the layout shows nothing that lies inside. The
/// colour is that of the types of all files inside, mixed by bytes. Keeps the tree, but nothing of the layout. Any
/// thread.
class FolderGrounds {
public:
    FolderGrounds() = default;

    /// Goes once over what the closed folders hold, except those that are closed in `former` too, which may be null: a
    /// window that gets another size closes few others. Throws std::bad_alloc.
    explicit FolderGrounds(const TreemapLayout& layout, const FolderGrounds* former = nullptr);

    /// Whether this is about folders of that tree.
    [[nodiscard]] bool isOf(const Tree& tree) const { return m_root && &m_root->tree() == &tree; }

    /// Of the item at an index of the layout. Nothing for what is no closed folder, or holds no bytes.
    [[nodiscard]] std::optional<QRgb> colorAt(std::size_t index) const
    {
        const Block& block = m_blocks[index / TreemapLayout::blockSize];
        const std::uint64_t bit = std::uint64_t{1} << index % TreemapLayout::blockSize;
        if ((block.isClosed & bit) == 0) {
            return std::nullopt;
        }
        return m_grounds[block.first + static_cast<std::size_t>(std::popcount(block.isClosed & (bit - 1)))].color;
    }

private:
    /// As many items as a block of the layout has.
    struct Block {
        std::uint64_t isClosed = 0; // a bit for each item, the first one least significant
        std::size_t first = 0;      // of their grounds
    };

    /// The color of a closed folder, and its position in the tree.
    struct Ground {
        Tree::Position node;
        QRgb color;
    };

    void add(std::size_t index, const Ground& ground);

    std::optional<FileNode> m_root; // nothing without folders
    std::vector<Block> m_blocks;
    std::vector<Ground> m_grounds; // of all closed folders, in the order of the layout and the tree
};

} // namespace morlaine
