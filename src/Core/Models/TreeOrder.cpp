#include "Core/Models/TreeOrder.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace morlaine {

namespace {

using Position = TreeArrays::Position;

struct Child {
    std::int64_t size;
    Position node;

    [[nodiscard]] bool isBefore(const Child& other) const noexcept
    {
        return size != other.size ? size > other.size : node < other.node;
    }
};

/// Where each node is to stand. A folder has its place before what it holds.
GrowingArray<Position> sortedPlaces(const TreeArrays& tree)
{
    GrowingArray<Position> places;
    places.resize(tree.size());
    places[0] = 0;
    GrowingArray<Child> children;
    for (Position node = 0; node < tree.size(); ++node) {
        children.resize(0);
        for (Position child = node + 1; child < tree.ends[node]; child = tree.ends[child]) {
            children.push_back({tree.sizes[child], child});
        }
        std::sort(children.data(), children.data() + children.size(),
                  [](const Child& a, const Child& b) { return a.isBefore(b); });
        Position place = places[node] + 1;
        for (const Child& child : children) {
            places[child.node] = place;
            place += tree.ends[child.node] - child.node;
        }
    }
    return places;
}

template <typename Value, typename Moved>
void move(GrowingArray<Value>& values, const GrowingArray<Position>& places, Moved moved)
{
    GrowingArray<Value> sorted;
    sorted.resize(values.size());
    for (Position node = 0; node < places.size(); ++node) {
        sorted[places[node]] = moved(node);
    }
    values = std::move(sorted);
}

void moveNames(TreeArrays& tree, const GrowingArray<Position>& places)
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
    tree.names = std::move(names);
    tree.nameStarts = std::move(starts);
}

} // namespace

void sortLargestFirst(TreeArrays& tree)
{
    const GrowingArray<Position> places = sortedPlaces(tree);
    moveNames(tree, places);
    move(tree.ids, places, [&](Position node) { return tree.ids[node]; });
    move(tree.sizes, places, [&](Position node) { return tree.sizes[node]; });
    move(tree.parents, places, [&](Position node) { return places[tree.parents[node]]; });
    move(tree.ends, places, [&](Position node) { return places[node] + (tree.ends[node] - node); });
    move(tree.kinds, places, [&](Position node) { return tree.kinds[node]; });
    std::map<Position, TreeArrays::OwnUrl> ownUrls;
    for (auto& [node, own] : tree.ownUrls) {
        ownUrls.emplace(places[node], std::move(own));
    }
    tree.ownUrls = std::move(ownUrls);
}

} // namespace morlaine
