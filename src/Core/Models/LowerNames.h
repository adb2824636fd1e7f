#pragma once

#include "Core/Models/TreeArrays.h"

#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

/// The lower-case forms of those names of a tree that lower-casing changes. All other names are already in lower case.
///
/// If a lower-case text occurs in a name, it also occurs in the lower-case form of that name. So a search looks through
/// the original names and through these.
class LowerNames {
public:
    using Position = TreeArrays::Position;

    /// A node whose lower-case name does not end in its lower-case extension.
    struct OddExtension {
        Position node;
        std::string lowerExtension;
    };

    /// Sets `hasOtherLowerName` for nodes whose name lower-casing changes.
    explicit LowerNames(TreeArrays& tree);

    /// The number of changed names, and node and name of each by its number (from 0), in the order of the tree.
    [[nodiscard]] std::size_t size() const noexcept { return m_nodes.size(); }
    [[nodiscard]] Position node(std::size_t number) const noexcept { return m_nodes[number]; }
    [[nodiscard]] std::string_view name(std::size_t number) const noexcept
    {
        return {m_text.data() + m_starts[number], m_starts[number + 1] - m_starts[number] - 1};
    }

    /// The number of the first changed name at or behind `node`, at least `least`; `size()` if there is none.
    [[nodiscard]] std::size_t numberFrom(Position node, std::size_t least = 0) const noexcept;

    /// The names one after another, with `TreeArrays::nameEnd` before the first and behind each, and where each starts.
    [[nodiscard]] std::string_view text() const noexcept { return {m_text.data(), m_text.size()}; }
    [[nodiscard]] const GrowingArray<std::uint32_t>& starts() const noexcept { return m_starts; }

    [[nodiscard]] const std::vector<OddExtension>& oddExtensions() const noexcept { return m_oddExtensions; }

    /// Whether any name but the root's contains a slash. No scanned name does.
    [[nodiscard]] bool hasSlashInNames() const noexcept { return m_hasSlashInNames; }

private:
    void addChanged(Position node, std::string_view lowerName);
    void noteExtension(const TreeArrays& tree, Position node, std::string_view lowerName);

    GrowingArray<Position> m_nodes;
    GrowingArray<std::uint32_t> m_starts; // one more than there are names
    GrowingArray<char> m_text;
    std::vector<OddExtension> m_oddExtensions;
    bool m_hasSlashInNames = false;
};

} // namespace morlaine
