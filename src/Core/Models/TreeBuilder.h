#pragma once

#include "Core/Models/FileNode.h"
#include "Core/Models/TreeArrays.h"
#include "Core/Models/TreeOrder.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

/// Builds one tree. Nodes are added in pre-order, each to the list that is open; the first one is the root. Use once,
/// on one thread. Throws TreeTooLarge and std::bad_alloc; afterwards it may only be destroyed.
class TreeBuilder {
public:
    using Position = TreeArrays::Position;

    /// A `measured` tree gets fresh ids, and its lists are sorted when they are closed: largest first, equal sizes in
    /// the order in which they were added. A `given` tree keeps ids and order.
    enum class Source : std::uint8_t { measured, given };

    struct Limits {
        std::uint64_t nodes = 0xFFFFFFFF;
        std::uint64_t nameBytes = 0xFFFFFFFF; // including one terminator per name
    };

    /// The fields of fixed size.
    struct Fields {
        Uuid id;
        std::int64_t size = 0;
        bool isDirectory = false;
        FileCategory category;
    };

    explicit TreeBuilder(Source source, Limits limits = {.nodes = 0xFFFFFFFF, .nameBytes = 0xFFFFFFFF});

    /// Adds a node with the location `bytes` (all bytes of a url). `name` is made valid UTF-8.
    Position add(const Fields& fields, std::string_view bytes, std::string_view name);

    /// Adds a node whose location is `component` (the exact bytes of one file name) in the folder whose list is open.
    /// The first form derives the name from it; in the second, `name` must be its valid UTF-8 form.
    Position addComponent(const Fields& fields, std::string_view component);
    Position addComponent(const Fields& fields, std::string_view component, std::string_view name);

    /// Adds a copy of a node with everything inside it.
    void addCopy(const FileNode& node);

    /// Opens a list for the node that was added last; further nodes are added to it.
    void openList();
    /// Requires that the sizes of all nodes in the list are final.
    void closeList();

    /// Removes the list of `node`, which must be open or have been closed last, and all nodes in it.
    void dropList(Position node);

    void setSize(Position node, std::int64_t size) { m_nodes.sizes[node] = size; }

    /// Replaces the fields of a node whose list was closed. The nodes in the list keep their locations. Without a
    /// `name` the node keeps its name.
    void amend(Position node, const Fields& fields, std::string_view bytes, const std::optional<std::string>& name);

    [[nodiscard]] const TreeArrays& nodes() const noexcept { return m_nodes; }

    /// The bytes with which the locations of a folder's contents begin.
    [[nodiscard]] const std::string& startOfLocationsIn(Position folder);

    /// Finishes the tree and returns its root.
    [[nodiscard]] FileNode finish();

private:
    struct OpenList {
        Position node;
        std::size_t pathLength; // length of `startOfLocationsIn`
    };

    Position append(const Fields& fields, std::string_view name);
    void setOwnUrl(Position node, std::string_view bytes, bool isComponent);
    void place(Position node, std::string_view bytes);
    void nameAgain();

    TreeArrays m_nodes;
    TreeOrder m_order;
    std::vector<OpenList> m_openLists;
    std::string m_openFolder; // the last result of `startOfLocationsIn`, which was for `m_openFolderNode`
    Position m_openFolderNode;
    std::map<Position, std::string> m_namesAgain; // of amended nodes, which have a url of their own until `finish`
    Source m_source;
    Limits m_limits;
};

} // namespace morlaine
