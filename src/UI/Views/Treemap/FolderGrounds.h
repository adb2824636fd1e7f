#pragma once

#include "Core/Treemap/TreemapLayout.h"

#include <QColor>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace morlaine {

/// The colours of closed folders: folders whose contents the layout does not show. A colour is the mean of the colours
/// of all files inside, weighted by bytes. Keeps the tree alive, but not the layout. Any thread.
class FolderGrounds {
public:
    FolderGrounds() = default;

    /// Passes once over the contents of the closed folders, except those that are closed in `former` too (which may be
    /// null): resizing the window closes few others. Throws std::bad_alloc.
    explicit FolderGrounds(const TreemapLayout& layout, const FolderGrounds* former = nullptr);

    /// Whether this belongs to folders of that tree.
    [[nodiscard]] bool isOf(const Tree& tree) const { return m_root && &m_root->tree() == &tree; }

    /// The colour of the item at an index of the layout. Nothing for an item that is not a closed folder, or has no
    /// bytes.
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
    /// The size of a block is that of a block of the layout.
    struct Block {
        std::uint64_t isClosed = 0; // one bit per item, the first one least significant
        std::size_t first = 0;      // index of their first ground
    };

    /// The colour of a closed folder, and its position in the tree.
    struct Ground {
        Tree::Position node;
        QRgb color;
    };

    void add(std::size_t index, const Ground& ground);

    std::optional<FileNode> m_root; // nothing if there are no folders
    std::vector<Block> m_blocks;
    std::vector<Ground> m_grounds; // of all closed folders, in the order of the layout and of the tree
};

} // namespace morlaine
