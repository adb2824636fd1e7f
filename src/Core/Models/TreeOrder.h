#pragma once

#include "Core/Models/TreeArrays.h"

#include <cstdint>

namespace morlaine {

/// The final order of a tree that is being built: the children of each folder largest first, those of equal size as
/// they stood. Beside the tree this takes four bytes a node, and sixteen bytes a child while a folder is sorted.
class TreeOrder {
public:
    using Position = TreeArrays::Position;

    /// Sorts what is in `folder`, which is complete with all its sizes.
    void sortList(const TreeArrays& tree, Position folder);

    /// Moves all nodes to their places, once each list has been sorted. Takes the memory of the largest array once
    /// more.
    void apply(TreeArrays& tree);

private:
    struct Child {
        std::int64_t size;
        Position node;

        [[nodiscard]] bool isBefore(const Child& other) const noexcept
        {
            return size != other.size ? size > other.size : node < other.node;
        }
    };

    GrowingArray<Position> m_offsets; // of each node's place from its folder's
    GrowingArray<Child> m_children;   // of the folder that is sorted
};

} // namespace morlaine
