#pragma once

#include "Utilities/FileCategory.h"
#include "Utilities/GrowingArray.h"
#include "Utilities/Uuid.h"

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace morlaine {

/// A tree that no `Position` or no place in `TreeArrays::names` can count.
class TreeTooLarge : public std::length_error {
public:
    TreeTooLarge() : std::length_error("There are too many files to show.") {}
};

/// The nodes of a tree, finished or being built, one element of each array a node. A node is known by its position: a
/// folder comes before what it holds, which follows it without a gap (pre-order), so the root's position is 0.
struct TreeArrays {
    using Position = std::uint32_t;

    /// Where a node lies that is not found in its folder under its name.
    struct OwnUrl {
        std::string bytes; // exact: one file name in the folder, or a whole location with trailing slashes
        bool isComponent;

        friend bool operator==(const OwnUrl&, const OwnUrl&) = default;
    };

    /// What the bits of a kind mean; the lowest four are the category.
    enum Kind : std::uint8_t {
        category = 0x0F,
        isFolder = 0x10,
        hasList = 0x20,
        hasOwnUrl = 0x40,
        hasOtherLowerName = 0x80
    };

    static constexpr char nameEnd = '\xFF'; // in no UTF-8

    GrowingArray<Uuid> ids;
    GrowingArray<std::int64_t> sizes;
    GrowingArray<Position> parents; // the root's is its own position
    GrowingArray<Position> ends;    // one behind the last node inside
    GrowingArray<std::uint8_t> kinds;
    GrowingArray<std::uint32_t> nameStarts; // in `names`; one more than nodes
    GrowingArray<char> names;               // valid UTF-8, `nameEnd` before the first and behind each
    std::map<Position, OwnUrl> ownUrls;     // of nodes with `hasOwnUrl`, of which the root is one

    [[nodiscard]] Position size() const noexcept { return static_cast<Position>(ids.size()); }
    [[nodiscard]] bool has(Position node, Kind kind) const noexcept { return (kinds[node] & kind) != 0; }
    [[nodiscard]] std::string_view name(Position node) const noexcept
    {
        return {names.data() + nameStarts[node], nameStarts[node + 1] - nameStarts[node] - 1};
    }

    /// The last component of the node's location in exact bytes.
    [[nodiscard]] std::string_view lastComponent(Position node) const noexcept;

    /// Whether the node's location is not in its folder, as is the root's.
    [[nodiscard]] bool hasLocationOfItsOwn(Position node) const noexcept
    {
        return has(node, hasOwnUrl) && !ownUrls.find(node)->second.isComponent;
    }

    void shrinkToFit() noexcept;

    /// All bytes of the node's location.
    [[nodiscard]] std::string location(Position node) const;
};

} // namespace morlaine
