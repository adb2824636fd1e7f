#pragma once

#include "Core/Models/FileNode.h"

#include <vector>

namespace morlaine::test {

/// Walks a tree depth first in the order of `children`: calls `enter(node)` before the node's contents and
/// `leave(node)` after them. For code that needs nodes; the arrays of `Tree` are faster. Does not recurse.
template <typename Enter, typename Leave>
void walkTree(const FileNode& root, Enter enter, Leave leave)
{
    const Tree& tree = root.tree();
    const Tree::Position end = tree.endOf(root.position());
    std::vector<Tree::Position> open;
    for (Tree::Position position = root.position(); position < end;) {
        open.push_back(position);
        enter(FileNode::at(tree, position));
        for (++position; !open.empty() && tree.endOf(open.back()) <= position; open.pop_back()) {
            leave(FileNode::at(tree, open.back()));
        }
    }
}

/// The same without `leave`.
template <typename Enter>
void walkTree(const FileNode& root, Enter enter)
{
    walkTree(root, enter, [](const FileNode&) {});
}

} // namespace morlaine::test
