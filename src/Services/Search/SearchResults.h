#pragma once

#include "Services/Search/SearchResultNode.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace morlaine {

/// What a search has found; shared by the values made of it.
struct SearchHits {
    std::shared_ptr<const FlatNodes> nodes;
    std::vector<FlatNodes::Position> positions; // of the hits, ascending
    std::vector<std::uint64_t> marks; // a bit for each node by position, least significant first: is its id a hit's
};

/// The hits of a search in the order of the tree. A value, whose copies share their content. Any thread.
class SearchResults {
public:
    SearchResults() = default;
    explicit SearchResults(std::shared_ptr<const SearchHits> hits) : m_hits(std::move(hits)) {}

    [[nodiscard]] std::size_t size() const noexcept { return m_hits ? m_hits->positions.size() : 0; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    [[nodiscard]] SearchResultNode operator[](std::size_t index) const
    {
        return {m_hits->nodes, m_hits->positions[index]};
    }

    /// Whether both are the outcome of one and the same search.
    [[nodiscard]] bool isSameAs(const SearchResults& other) const noexcept { return m_hits == other.m_hits; }

private:
    friend class NodeIDSet;

    std::shared_ptr<const SearchHits> m_hits;
};

/// The ids of the hits of a search. A value, whose copies share their content. Any thread.
class NodeIDSet {
public:
    NodeIDSet() = default;
    explicit NodeIDSet(const SearchResults& results) : m_hits(results.m_hits) {}

    [[nodiscard]] bool empty() const noexcept { return !m_hits || m_hits->positions.empty(); }
    [[nodiscard]] bool contains(const Uuid& id) const noexcept;

    /// Whether both come from one and the same search.
    [[nodiscard]] bool isSameAs(const NodeIDSet& other) const noexcept { return m_hits == other.m_hits; }

private:
    std::shared_ptr<const SearchHits> m_hits;
};

} // namespace morlaine
