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

/// Makes one tree: nodes are added in pre-order, each to the list that is open. The first is the root. Used once, on
/// one thread. Throws TreeTooLarge and std::bad_alloc, and may only be destroyed after that.
class TreeBuilder {
public:
    using Position = TreeArrays::Position;

    /// A tree that is measured gets fresh ids, and its lists are sorted when they are closed: largest first, those of
    /// equal size in the order in which they were added. One that is given keeps all as it is.
    enum class Source : std::uint8_t { measured, given };

    struct Limits {
        std::uint64_t nodes = 0xFFFFFFFF;
        std::uint64_t nameBytes = 0xFFFFFFFF; // one for each name included
    };

    /// The fields of a node that have no length of their own.
    struct Fields {
        Uuid id;
        std::int64_t size = 0;
        bool isDirectory = false;
        FileCategory category;
    };

    explicit TreeBuilder(Source source, Limits limits = {.nodes = 0xFFFFFFFF, .nameBytes = 0xFFFFFFFF});

    /// Adds a node at the location `bytes` (all bytes of a url). `name` is made valid UTF-8.
    Position add(const Fields& fields, std::string_view bytes, std::string_view name);

    /// Adds a node whose location is `component` (exact bytes of one file name) in the folder whose list is open. The
    /// second form takes the valid text of those bytes for its name.
    Position addComponent(const Fields& fields, std::string_view component);
    Position addComponent(const Fields& fields, std::string_view component, std::string_view name);

    /// Adds a copy of a node with all that it holds.
    void addCopy(const FileNode& node);

    /// The node last added gets a list, to which nodes are added from here on.
    void openList();
    /// The sizes of what is in it are final.
    void closeList();

    /// Drops what has been added to the list that is open, or closed and was the last: `node` has none again.
    void dropList(Position node);

    void setSize(Position node, std::int64_t size) { m_nodes.sizes[node] = size; }

    /// Gives a node its fields again after its list was closed. What the list holds stays where it is. Without a
    /// `name` it keeps the one it has.
    void amend(Position node, const Fields& fields, std::string_view bytes, const std::optional<std::string>& name);

    [[nodiscard]] const TreeArrays& nodes() const noexcept { return m_nodes; }

    /// All bytes with which the locations of what the node holds begin.
    [[nodiscard]] const std::string& startOfLocationsIn(Position folder);

    /// The root of the finished tree.
    [[nodiscard]] FileNode finish();

private:
    struct OpenList {
        Position node;
        std::size_t pathLength; // of `startOfLocationsIn`
    };

    Position append(const Fields& fields, std::string_view name);
    void setOwnUrl(Position node, std::string_view bytes, bool isComponent);
    void place(Position node, std::string_view bytes);
    void nameAgain();

    TreeArrays m_nodes;
    TreeOrder m_order;
    std::vector<OpenList> m_openLists;
    std::string m_openFolder; // what `startOfLocationsIn` has said last, and for which node
    Position m_openFolderNode;
    std::map<Position, std::string> m_namesAgain; // of amended nodes, which keep a url of their own until the end
    Source m_source;
    Limits m_limits;
};

} // namespace morlaine
