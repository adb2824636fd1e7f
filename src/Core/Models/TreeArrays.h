#pragma once

#include "Core/Models/GrowingArray.h"
#include "Utilities/FileCategory.h"
#include "Utilities/Uuid.h"

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace morlaine {

/// The tree has more nodes than `Position` can count, or more bytes of names than fit `TreeArrays::names`.
class TreeTooLarge : public std::length_error {
public:
    TreeTooLarge() : std::length_error("There are too many files to show.") {}
};

/// The nodes of a tree, finished or being built; each array has one element per node. A position identifies a node.
/// Nodes stand in pre-order: a folder is followed by its contents without a gap, and the root's position is 0.
struct TreeArrays {
    using Position = std::uint32_t;

    /// The location of a node that does not follow from its folder and name.
    struct OwnUrl {
        std::string bytes; // exact: one file name in the folder, or a whole location with its trailing slashes
        bool isComponent;

        friend bool operator==(const OwnUrl&, const OwnUrl&) = default;
    };

    /// The bits of a kind; the lowest four are the category.
    enum Kind : std::uint8_t {
        category = 0x0F,
        isFolder = 0x10,
        hasList = 0x20,
        hasOwnUrl = 0x40,
        hasOtherLowerName = 0x80
    };

    static constexpr char nameEnd = '\xFF'; // never part of UTF-8

    GrowingArray<Uuid> ids;
    GrowingArray<std::int64_t> sizes;
    GrowingArray<Position> parents; // the root's parent is 0
    GrowingArray<Position> ends;    // one behind the last node inside
    GrowingArray<std::uint8_t> kinds;
    GrowingArray<std::uint32_t> nameStarts; // offsets in `names`; one more than there are nodes
    GrowingArray<char> names;               // valid UTF-8, with `nameEnd` before the first and behind each
    std::map<Position, OwnUrl> ownUrls;     // of nodes with `hasOwnUrl`; the root is always one

    [[nodiscard]] Position size() const noexcept { return static_cast<Position>(ids.size()); }
    [[nodiscard]] bool has(Position node, Kind kind) const noexcept { return (kinds[node] & kind) != 0; }
    [[nodiscard]] std::string_view name(Position node) const noexcept
    {
        return {names.data() + nameStarts[node], nameStarts[node + 1] - nameStarts[node] - 1};
    }

    /// The exact bytes of the last component of the node's location.
    [[nodiscard]] std::string_view lastComponent(Position node) const noexcept;

    /// Whether the node's location does not lie directly in its folder. True for the root.
    [[nodiscard]] bool hasLocationOfItsOwn(Position node) const noexcept
    {
        return has(node, hasOwnUrl) && !ownUrls.find(node)->second.isComponent;
    }

    void shrinkToFit() noexcept;

    /// All bytes of the node's location.
    [[nodiscard]] std::string location(Position node) const;
};

} // namespace morlaine
