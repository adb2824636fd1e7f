#pragma once

#include "Core/Models/TreeArrays.h"

#include <cstdint>

namespace morlaine {

/// Sorts a tree that is being built: the children of each folder largest first, equal sizes in their previous order.
/// Needs four bytes a node, and sixteen bytes for each child of the folder that is being sorted.
class TreeOrder {
public:
    using Position = TreeArrays::Position;

    /// Sorts the children of `folder`, whose contents and sizes must be final.
    void sortList(const TreeArrays& tree, Position folder);

    /// Moves all nodes to their final positions, after each list was sorted. Needs a second copy of the largest array.
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

    GrowingArray<Position> m_offsets; // of each node from its folder
    GrowingArray<Child> m_children;   // of the folder that is being sorted
};

} // namespace morlaine
