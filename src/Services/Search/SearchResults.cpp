#include "Services/Search/SearchResults.h"

namespace morlaine {

bool NodeIDSet::contains(const Uuid& id) const noexcept
{
    if (!m_hits) {
        return false;
    }
    const auto position = m_hits->nodes->find(id);
    return position && (m_hits->marks[*position / 64] >> (*position % 64) & 1) != 0;
}

} // namespace morlaine
