#include "Core/Models/RepeatedIds.h"

#include <QHashFunctions>

#include <algorithm>
#include <bit>
#include <cstring>

namespace morlaine {

namespace {

using Position = TreeArrays::Position;

/// The seed differs from run to run, so that no file can be crafted to make all ids collide.
std::uint64_t hashOf(const Uuid& id, std::uint64_t seed) noexcept
{
    std::array<std::uint64_t, 2> words{};
    std::memcpy(words.data(), id.bytes().data(), sizeof words);
    std::uint64_t hash = (words[0] ^ seed) * 0x9E3779B97F4A7C15U;
    hash = (hash ^ (hash >> 32) ^ words[1]) * (seed | 1);
    return hash ^ (hash >> 29);
}

/// A set of hashes with false positives but no false negatives.
class HashMarks {
public:
    explicit HashMarks(std::size_t leastBits)
        : m_bits(std::bit_ceil(std::max<std::size_t>(leastBits, 64)))
        , m_words(m_bits / 64)
    {
    }

    /// Returns whether the hash may already have been inserted.
    bool insert(std::uint64_t hash)
    {
        std::uint64_t& word = m_words[(hash & (m_bits - 1)) / 64];
        const std::uint64_t bit = std::uint64_t{1} << (hash % 64);
        const bool wasThere = (word & bit) != 0;
        word |= bit;
        return wasThere;
    }

    [[nodiscard]] bool contains(std::uint64_t hash) const
    {
        return (m_words[(hash & (m_bits - 1)) / 64] >> (hash % 64) & 1) != 0;
    }

private:
    std::size_t m_bits;
    std::vector<std::uint64_t> m_words;
};

struct Suspect {
    std::uint64_t hash;
    Position node;
};

/// All nodes whose id occurs more than once, and some others.
std::vector<Suspect> suspects(const GrowingArray<Uuid>& ids)
{
    const std::uint64_t seed = QHashSeed::globalSeed();
    std::vector<std::uint64_t> repeated;
    HashMarks all(ids.size() * 16);
    for (const Uuid& id : ids) {
        const std::uint64_t hash = hashOf(id, seed);
        if (all.insert(hash)) {
            repeated.push_back(hash);
        }
    }
    std::vector<Suspect> found;
    if (repeated.empty()) {
        return found;
    }
    // Uses other bits of the hash than before, which removes most false positives.
    HashMarks marks(std::min(repeated.size() * 256, ids.size() * 16));
    for (const std::uint64_t hash : repeated) {
        marks.insert(hash >> 32);
    }
    for (Position node = 0; node < ids.size(); ++node) {
        if (const std::uint64_t hash = hashOf(ids[node], seed); marks.contains(hash >> 32)) {
            found.push_back({hash, node});
        }
    }
    return found;
}

} // namespace

std::vector<std::pair<Position, Position>> repeatedIds(const GrowingArray<Uuid>& ids)
{
    std::vector<Suspect> found = suspects(ids);
    std::ranges::sort(found, [&ids](const Suspect& a, const Suspect& b) {
        if (a.hash != b.hash) {
            return a.hash < b.hash;
        }
        const int order = std::memcmp(ids[a.node].bytes().data(), ids[b.node].bytes().data(), sizeof(Uuid));
        return order != 0 ? order < 0 : a.node < b.node;
    });
    std::vector<std::pair<Position, Position>> pairs;
    for (std::size_t i = 1, first = 0; i < found.size(); ++i) {
        if (found[i].hash == found[first].hash && ids[found[i].node] == ids[found[first].node]) {
            pairs.emplace_back(found[i].node, found[first].node);
        } else {
            first = i;
        }
    }
    std::ranges::sort(pairs);
    return pairs;
}

} // namespace morlaine
