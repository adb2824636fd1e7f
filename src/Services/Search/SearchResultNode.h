#pragma once

#include "Services/Search/FlatNodes.h"

#include <memory>
#include <string>
#include <utility>

namespace morlaine {

/// One node of an indexed tree, as a search finds it. A value; keeps the tree alive. Any thread.
class SearchResultNode {
public:
    SearchResultNode(std::shared_ptr<const FlatNodes> nodes, FlatNodes::Position position)
        : m_nodes(std::move(nodes))
        , m_position(position)
    {
    }

    /// The file or folder with all that it holds. Lives as long as this.
    [[nodiscard]] const FileNode& node() const noexcept { return m_nodes->node(m_position); }

    /// Its path built from names, valid UTF-8: for showing. Made when asked for.
    [[nodiscard]] std::string path() const { return m_nodes->path(m_position); }

    [[nodiscard]] const Uuid& id() const noexcept { return node().id(); }

private:
    std::shared_ptr<const FlatNodes> m_nodes;
    FlatNodes::Position m_position;
};

} // namespace morlaine
