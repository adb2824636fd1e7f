#include "Core/Models/TreeOrder.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace morlaine {

namespace {

using Position = TreeArrays::Position;

/// The buffer for larger folders is freed instead of reused.
constexpr std::size_t mostChildrenToKeep = 65'536;

/// In the memory of `spare`, which becomes that of the values as they stood.
template <typename Value, typename Spare, typename Moved>
GrowingArray<Value> move(GrowingArray<Value>& values, GrowingArray<Spare>&& spare, const GrowingArray<Position>& places,
                         Moved moved)
{
    auto sorted = GrowingArray<Value>::inMemoryOf(std::move(spare));
    sorted.resize(values.size());
    for (Position node = 0; node < places.size(); ++node) {
        sorted[places[node]] = moved(node);
    }
    std::swap(values, sorted);
    return sorted;
}

GrowingArray<char> moveNames(TreeArrays& tree, const GrowingArray<Position>& places)
{
    GrowingArray<std::uint32_t> starts;
    starts.resize(tree.nameStarts.size());
    for (Position node = 0; node < tree.size(); ++node) {
        starts[places[node] + 1] = tree.nameStarts[node + 1] - tree.nameStarts[node];
    }
    starts[0] = tree.nameStarts[0];
    for (std::size_t i = 1; i < starts.size(); ++i) {
        starts[i] += starts[i - 1];
    }
    GrowingArray<char> names;
    names.resize(tree.names.size());
    names[0] = TreeArrays::nameEnd;
    for (Position node = 0; node < tree.size(); ++node) {
        const std::size_t start = tree.nameStarts[node];
        std::memcpy(names.data() + starts[places[node]], tree.names.data() + start, tree.nameStarts[node + 1] - start);
    }
    std::swap(tree.names, names);
    tree.nameStarts = std::move(starts);
    return names;
}

} // namespace

void TreeOrder::sortList(const TreeArrays& tree, Position folder)
{
    m_offsets.resize(tree.size());
    m_children.resize(0);
    const Position end = tree.ends[folder];
    for (Position child = folder + 1; child < end; child = tree.ends[child]) {
        m_children.push_back({tree.sizes[child], child});
    }
    std::sort(m_children.data(), m_children.data() + m_children.size(),
              [](const Child& a, const Child& b) { return a.isBefore(b); });
    Position offset = 1;
    for (const Child& child : m_children) {
        m_offsets[child.node] = offset;
        offset += tree.ends[child.node] - child.node;
    }
    if (m_children.size() > mostChildrenToKeep) {
        m_children = {};
    }
}

/// A folder has its place before what it holds.
void TreeOrder::apply(TreeArrays& tree)
{
    GrowingArray<Position> places = std::move(m_offsets);
    places.resize(tree.size());
    places[0] = 0;
    for (Position node = 1; node < tree.size(); ++node) {
        places[node] += places[tree.parents[node]];
    }
    auto oldNames = moveNames(tree, places);
    auto oldIds = move(tree.ids, std::move(oldNames), places, [&](Position node) { return tree.ids[node]; });
    auto oldSizes = move(tree.sizes, std::move(oldIds), places, [&](Position node) { return tree.sizes[node]; });
    auto oldParents =
        move(tree.parents, std::move(oldSizes), places, [&](Position node) { return places[tree.parents[node]]; });
    auto oldEnds = move(tree.ends, std::move(oldParents), places,
                        [&](Position node) { return places[node] + (tree.ends[node] - node); });
    (void)move(tree.kinds, std::move(oldEnds), places, [&](Position node) { return tree.kinds[node]; });
    std::map<Position, TreeArrays::OwnUrl> ownUrls;
    for (auto& [node, own] : tree.ownUrls) {
        ownUrls.emplace(places[node], std::move(own));
    }
    tree.ownUrls = std::move(ownUrls);
}

} // namespace morlaine
