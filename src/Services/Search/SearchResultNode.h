#pragma once

#include "Core/Models/FileNode.h"

#include <string>
#include <utility>

namespace morlaine {

/// One hit of a search. A value; keeps the tree alive. Any thread.
class SearchResultNode {
public:
    /// `node` is `root` or a node inside it, in the same tree.
    SearchResultNode(FileNode node, FileNode root) : m_node(std::move(node)), m_root(std::move(root)) {}

    /// The file or folder that was found. Valid as long as this object.
    [[nodiscard]] const FileNode& node() const noexcept { return m_node; }

    /// The path to show, built from names, valid UTF-8: for the root its location, for others the path of the folder, a
    /// slash and the name. Built on each call.
    [[nodiscard]] std::string path() const;

    [[nodiscard]] const Uuid& id() const noexcept { return m_node.id(); }

private:
    FileNode m_node;
    FileNode m_root;
};

} // namespace morlaine
