#pragma once

#include "Core/Models/FileNode.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace morlaine {

/// Marks the nodes of a tree whose name, path or extension contains a text. Use once.
///
/// If the path of a folder contains the text, so do the paths of its contents. So only the part that a node adds to its
/// folder's path, a slash and the name, is searched. When it completes a match, the node is marked with everything
/// inside it.
class TextSearch {
public:
    /// Searches `root` and everything inside it. `query` and `rootPath` are in lower case; `query` must not be empty
    /// except for `takeAllMarks`.
    TextSearch(const FileNode& root, std::string_view rootPath, std::string_view query);

    /// One bit for each node of the whole tree by position, least significant first.
    [[nodiscard]] std::vector<std::uint64_t> takeMarks();

    /// Marks all nodes.
    [[nodiscard]] std::vector<std::uint64_t> takeAllMarks();

private:
    using Position = Tree::Position;

    void findAcrossSlashes();
    void findInWholePaths();
    void findExtensions();

    /// Calls `visit(node)` for nodes below the root whose lower-case name begins with `start`: first for names that are
    /// in lower case already, then for lower-cased ones, each in order. Continues at the node that `visit` returns.
    template <typename Visit>
    void eachNameWith(std::string_view start, Visit visit);

    [[nodiscard]] std::string_view lowerName(Position node) const;
    [[nodiscard]] bool pathEndsWith(Position node, std::string_view text) const;

    /// Marks a node and everything inside it; returns the next node.
    Position markWithContents(Position node);
    /// Returns `end`.
    Position mark(Position begin, Position end);

    const Tree& m_tree;
    const TreeArrays& m_nodes;
    const Position m_root;
    const Position m_end;
    const std::string_view m_rootPath;
    const std::string_view m_query;
    std::vector<std::uint64_t> m_marks;
};

} // namespace morlaine
