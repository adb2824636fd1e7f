#pragma once

#include "Core/Models/GrowingArray.h"
#include "Services/Search/SearchResultNode.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace morlaine {

/// The outcome of a search, shared by the values made from it. Any thread.
class SearchHits {
public:
    /// `positions` are those of the hits, ascending. `marks` has one bit for each node of the tree, least significant
    /// first: whether its id is that of a hit.
    SearchHits(FileNode root, GrowingArray<Tree::Position> positions, std::vector<std::uint64_t> marks)
        : m_root(std::move(root))
        , m_positions(std::move(positions))
        , m_marks(std::move(marks))
    {
    }

    [[nodiscard]] std::size_t size() const noexcept { return m_positions.size(); }
    [[nodiscard]] const FileNode& root() const noexcept { return m_root; }
    [[nodiscard]] Tree::Position position(std::size_t index) const noexcept { return m_positions[index]; }

    /// Whether the id of the node at `position` is that of a hit.
    [[nodiscard]] bool isMarked(Tree::Position position) const noexcept
    {
        return (m_marks[position / 64] >> (position % 64) & 1) != 0;
    }

    /// The same for any of the nodes in `begin`...`end` - 1.
    [[nodiscard]] bool isAnyMarked(Tree::Position begin, Tree::Position end) const noexcept;

    /// Whether any id is that of a hit. The first call collects the ids of all hits.
    [[nodiscard]] bool contains(const Uuid& id) const;

private:
    FileNode m_root;
    GrowingArray<Tree::Position> m_positions;
    std::vector<std::uint64_t> m_marks;
    mutable std::once_flag m_hasGathered;
    mutable std::vector<Uuid> m_ids; // sorted
};

/// The hits of a search in the order of the tree. A value; copies share their content. Any thread.
class SearchResults {
public:
    SearchResults() = default;
    explicit SearchResults(std::shared_ptr<const SearchHits> hits) : m_hits(std::move(hits)) {}

    [[nodiscard]] std::size_t size() const noexcept { return m_hits ? m_hits->size() : 0; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    [[nodiscard]] SearchResultNode operator[](std::size_t index) const
    {
        return {FileNode::at(m_hits->root().tree(), m_hits->position(index)), m_hits->root()};
    }

    /// Whether both come from the same search.
    [[nodiscard]] bool isSameAs(const SearchResults& other) const noexcept { return m_hits == other.m_hits; }

private:
    friend class NodeIDSet;

    std::shared_ptr<const SearchHits> m_hits;
};

/// The ids of the hits of a search. A value; copies share their content. Any thread.
class NodeIDSet {
public:
    NodeIDSet() = default;
    explicit NodeIDSet(const SearchResults& results) : m_hits(results.m_hits) {}

    [[nodiscard]] bool empty() const noexcept { return !m_hits || m_hits->size() == 0; }

    /// Whether the set contains the id of the node at a position of `tree`. One bit test for the searched tree.
    [[nodiscard]] bool contains(const Tree& tree, Tree::Position node) const
    {
        return m_hits && (&tree == &m_hits->root().tree() ? m_hits->isMarked(node) : m_hits->contains(tree.idOf(node)));
    }
    [[nodiscard]] bool contains(const FileNode& node) const { return contains(node.tree(), node.position()); }

    /// The same for any id, by binary search.
    [[nodiscard]] bool contains(const Uuid& id) const { return m_hits && m_hits->contains(id); }

    /// Whether the set contains the id of any node inside a folder, however deep.
    [[nodiscard]] bool containsAnyInside(const Tree& tree, Tree::Position folder) const;

    /// Whether both come from the same search.
    [[nodiscard]] bool isSameAs(const NodeIDSet& other) const noexcept { return m_hits == other.m_hits; }

private:
    std::shared_ptr<const SearchHits> m_hits;
};

} // namespace morlaine
