#pragma once

#include "Core/Models/FileNode.h"

#include <span>
#include <vector>

namespace morlaine {

/// Walks a tree depth first on a stack of its own, in the order of `children`: `enter(node)` before what the node
/// holds, `leave(node)` behind it. Works at any depth with any thread's stack.
template <typename Enter, typename Leave>
void walkTree(const FileNode& root, Enter enter, Leave leave)
{
    struct Level {
        const FileNode* node;
        std::span<const FileNode> rest;
    };
    std::vector<Level> levels;
    const auto descend = [&](const FileNode& node) {
        enter(node);
        if (const auto children = node.childrenOrNone(); !children.empty()) {
            levels.push_back({&node, children});
        } else {
            leave(node);
        }
    };
    descend(root);
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.rest.empty()) {
            const FileNode& finished = *level.node;
            levels.pop_back();
            leave(finished);
            continue;
        }
        const FileNode& next = level.rest.front();
        level.rest = level.rest.subspan(1);
        descend(next);
    }
}

/// The same for a caller that needs no `leave`.
template <typename Enter>
void walkTree(const FileNode& root, Enter enter)
{
    walkTree(root, enter, [](const FileNode&) {});
}

} // namespace morlaine
