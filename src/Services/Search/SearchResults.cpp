#include "Services/Search/SearchResults.h"

#include <algorithm>
#include <functional>

namespace morlaine {

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

} // namespace morlaine
