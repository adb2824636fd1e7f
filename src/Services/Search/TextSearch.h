#pragma once

#include "Core/Models/FileNode.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace morlaine {

/// Marks the nodes of a tree that a text is found in. Used once.
///
/// A path contains the text if the path of a folder above does. So only what a node adds to its folder's path is looked
/// at, the slash and the name, and once it holds the text's end, everything inside the node is marked with it.
class TextSearch {
public:
    /// Looks at `root` and all that it holds. `query` and `rootPath` are in lower case; `query` may be empty, which
    /// `takeAllMarks` alone allows.
    TextSearch(const FileNode& root, std::string_view rootPath, std::string_view query);

    /// One bit for each node of the whole tree by position, least significant first.
    [[nodiscard]] std::vector<std::uint64_t> takeMarks();

    /// All nodes, whatever the text.
    [[nodiscard]] std::vector<std::uint64_t> takeAllMarks();

private:
    using Position = Tree::Position;

    void findInNames();
    void findAcrossSlashes();
    void findInWholePaths();
    void findExtensions();

    /// Calls `visit(node)` for nodes below the root in whose name, in lower case, the query is found: in the block of
    /// names and in that of lower-cased ones, each in order. It goes on at the node that `visit` returns.
    template <typename Visit>
    void eachOccurrence(Visit visit);

    [[nodiscard]] std::string_view lowerName(Position node) const;
    [[nodiscard]] bool pathEndsWith(Position node, std::string_view text) const;

    /// Marks a node with all that it holds; returns the next one.
    Position markWithContents(Position node);
    void markRange(Position begin, Position end);

    const Tree& m_tree;
    const TreeArrays& m_nodes;
    const Position m_root;
    const Position m_end;
    const std::string_view m_rootPath;
    const std::string_view m_query;
    std::vector<std::uint64_t> m_marks;
};

} // namespace morlaine
