#include "Services/Search/SearchResults.h"

#include <algorithm>
#include <functional>

namespace morlaine {

bool SearchHits::isAnyMarked(Tree::Position begin, Tree::Position end) const noexcept
{
    if (begin >= end) {
        return false;
    }
    const Tree::Position last = (end - 1) / 64;
    std::uint64_t wanted = ~std::uint64_t{0} << begin % 64;
    for (Tree::Position word = begin / 64; word < last; ++word) {
        if ((m_marks[word] & wanted) != 0) {
            return true;
        }
        wanted = ~std::uint64_t{0};
    }
    return (m_marks[last] & wanted & ~std::uint64_t{0} >> (63 - (end - 1) % 64)) != 0;
}

bool SearchHits::contains(const Uuid& id) const
{
    std::call_once(m_hasGathered, [this] {
        m_ids.reserve(m_positions.size());
        for (const Tree::Position position : m_positions) {
            m_ids.push_back(m_root.tree().idOf(position));
        }
        std::ranges::sort(m_ids, std::ranges::less(), &Uuid::bytes);
    });
    return std::ranges::binary_search(m_ids, id.bytes(), std::ranges::less(), &Uuid::bytes);
}

bool NodeIDSet::containsAnyInside(const Tree& tree, Tree::Position folder) const
{
    if (!m_hits) {
        return false;
    }
    const Tree::Position begin = folder + 1;
    const Tree::Position end = tree.endOf(folder);
    if (&tree == &m_hits->root().tree()) {
        return m_hits->isAnyMarked(begin, end);
    }
    for (Tree::Position node = begin; node != end; ++node) {
        if (m_hits->contains(tree.idOf(node))) {
            return true;
        }
    }
    return false;
}

} // namespace morlaine
