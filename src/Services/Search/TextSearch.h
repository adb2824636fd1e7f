#pragma once

#include "Services/Search/FlatNodes.h"

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
    /// `query` is in lower case and not empty.
    TextSearch(const FlatNodes& nodes, std::string_view query);

    /// One bit for each node by position, least significant first.
    [[nodiscard]] std::vector<std::uint64_t> takeMarks();

private:
    void findInNames();
    void findAcrossSlashes();
    void findInWholePaths();
    void findExtensions();

    [[nodiscard]] bool pathEndsWith(FlatNodes::Position position, std::string_view text) const;
    void markRange(std::size_t begin, std::size_t end);
    void markWithContents(FlatNodes::Position position) { markRange(position, m_nodes.endOf(position)); }

    const FlatNodes& m_nodes;
    const std::string_view m_query;
    std::vector<std::uint64_t> m_marks;
};

} // namespace morlaine
