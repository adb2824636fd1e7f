#pragma once

#include "Core/Models/FileNode.h"

#include <string>
#include <utility>

namespace morlaine {

/// One node of an indexed tree, as a search finds it. A value; keeps the tree alive. Any thread.
class SearchResultNode {
public:
    /// `node` is `root` or inside it, in the same tree.
    SearchResultNode(FileNode node, FileNode root) : m_node(std::move(node)), m_root(std::move(root)) {}

    /// The file or folder with all that it holds. Lives as long as this.
    [[nodiscard]] const FileNode& node() const noexcept { return m_node; }

    /// Its path built from names, valid UTF-8: for showing. The root's is its location's, any other its folder's, a
    /// slash and its name. Made when asked for.
    [[nodiscard]] std::string path() const;

    [[nodiscard]] const Uuid& id() const noexcept { return m_node.id(); }

private:
    FileNode m_node;
    FileNode m_root;
};

} // namespace morlaine
