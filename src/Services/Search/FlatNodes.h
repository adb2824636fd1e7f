#pragma once

#include "Core/Models/FileNode.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morlaine {

/// Every node of a tree in pre-order, laid out for going through all of them quickly. A node is known by its position:
/// the root's is 0, and what a folder holds follows it without a gap. Immutable; keeps the tree alive. Any thread.
class FlatNodes {
public:
    using Position = std::uint32_t;

    /// A node whose extension cannot be found in its name, as lower-casing has left both.
    struct OddExtension {
        Position position;
        std::string lowerExtension;
    };

    explicit FlatNodes(const FileNode& root);
    FlatNodes(const FlatNodes&) = delete;
    FlatNodes& operator=(const FlatNodes&) = delete;

    [[nodiscard]] Position size() const noexcept { return static_cast<Position>(m_nodes.size()); }
    [[nodiscard]] const FileNode& node(Position position) const noexcept { return *m_nodes[position]; }

    /// The path built from names, valid UTF-8: the root's is its location's, any other its folder's, a slash and its
    /// name.
    [[nodiscard]] std::string path(Position position) const;

    /// The node's, beside each other for all nodes.
    [[nodiscard]] std::int64_t sizeOf(Position position) const noexcept { return m_sizes[position]; }
    [[nodiscard]] FileCategory categoryOf(Position position) const noexcept { return m_categories[position]; }

    /// One behind the last node that the node holds, however deep; the next position for one that holds nothing.
    [[nodiscard]] Position endOf(Position position) const noexcept { return m_ends[position]; }

    /// The position of the folder that holds the node, which must not be the root.
    [[nodiscard]] Position parentOf(Position position) const noexcept { return m_parents[position]; }

    [[nodiscard]] const std::string& lowerRootPath() const noexcept { return m_lowerRootPath; }

    /// All names in lower case one after another, a byte that no text holds between them; where in it a node's begins;
    /// and which node's it is that holds the byte at `offset`, not before `from`.
    [[nodiscard]] std::string_view lowerNames() const noexcept { return m_lowerNames; }
    [[nodiscard]] std::size_t nameOffset(Position position) const noexcept { return m_nameOffsets[position]; }
    [[nodiscard]] std::string_view lowerName(Position position) const noexcept;
    [[nodiscard]] Position positionAtOffset(std::size_t offset, Position from) const noexcept;

    [[nodiscard]] std::span<const OddExtension> oddExtensions() const noexcept { return m_oddExtensions; }

    /// Whether a name holds a slash; none in a file system does.
    [[nodiscard]] bool hasSlashInNames() const noexcept { return m_hasSlashInNames; }

    /// The position of a node with that id: the first that has it.
    [[nodiscard]] std::optional<Position> find(const Uuid& id) const noexcept;

    /// Nodes whose id an earlier one has already, each with the position of that one. None in a tree that was scanned.
    [[nodiscard]] std::span<const std::pair<Position, Position>> repeatedIds() const noexcept { return m_repeatedIds; }

private:
    void reserve(std::size_t count);
    void append(const FileNode& node, Position parent);
    void noteExtension(const FileNode& node, std::string_view lowerName);
    void indexIds(std::span<const std::uint32_t> hashes);
    [[nodiscard]] std::size_t slotFor(const Uuid& id, std::uint32_t hash) const noexcept;
    [[nodiscard]] Position positionIn(std::uint32_t slot) const noexcept;

    FileNode m_root;
    std::string m_rootPath;
    std::string m_lowerRootPath;
    std::vector<const FileNode*> m_nodes;
    std::vector<Position> m_ends;
    std::vector<Position> m_parents;
    std::vector<std::int64_t> m_sizes;
    std::vector<FileCategory> m_categories;
    std::string m_lowerNames;
    std::vector<std::size_t> m_nameOffsets; // one more than nodes
    std::vector<OddExtension> m_oddExtensions;
    bool m_hasSlashInNames = false;
    std::vector<std::uint32_t> m_idSlots; // open addressing by id: a position below some bits of the id's hash
    int m_positionBits = 0;
    std::vector<std::pair<Position, Position>> m_repeatedIds;
};

} // namespace morlaine
