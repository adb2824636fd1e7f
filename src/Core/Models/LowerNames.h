#pragma once

#include "Core/Models/TreeArrays.h"

#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

/// What lower-casing makes of the names of a tree that it changes; the other names are in lower case as they stand.
///
/// A text in lower case that occurs in a name occurs in the name in lower case too. So all that is to be found is
/// found in the names as they stand and in these.
class LowerNames {
public:
    using Position = TreeArrays::Position;

    /// A node whose extension cannot be found in its name, as lower-casing has left both.
    struct OddExtension {
        Position node;
        std::string lowerExtension;
    };

    /// Marks the nodes whose names it changes with `hasOtherLowerName`.
    explicit LowerNames(TreeArrays& tree);

    /// How many names are changed, and by number from 0 the node and the name of each, in the order of the tree.
    [[nodiscard]] std::size_t size() const noexcept { return m_nodes.size(); }
    [[nodiscard]] Position node(std::size_t number) const noexcept { return m_nodes[number]; }
    [[nodiscard]] std::string_view name(std::size_t number) const noexcept
    {
        return {m_text.data() + m_starts[number], m_starts[number + 1] - m_starts[number] - 1};
    }

    /// The number of the first changed name at or behind `node`, which is `size()` where there is none.
    [[nodiscard]] std::size_t numberFrom(Position node) const noexcept;

    /// The names one after another, `TreeArrays::nameEnd` before the first and behind each, and where each starts.
    [[nodiscard]] std::string_view text() const noexcept { return {m_text.data(), m_text.size()}; }
    [[nodiscard]] const GrowingArray<std::uint32_t>& starts() const noexcept { return m_starts; }

    [[nodiscard]] const std::vector<OddExtension>& oddExtensions() const noexcept { return m_oddExtensions; }

    /// Whether the name of any node but the root's holds a slash; none in a file system does.
    [[nodiscard]] bool hasSlashInNames() const noexcept { return m_hasSlashInNames; }

private:
    void addChanged(Position node, std::string_view lowerName);
    void noteExtension(const TreeArrays& tree, Position node, std::string_view lowerName);

    GrowingArray<Position> m_nodes;
    GrowingArray<std::uint32_t> m_starts; // one more than names
    GrowingArray<char> m_text;
    std::vector<OddExtension> m_oddExtensions;
    bool m_hasSlashInNames = false;
};

} // namespace morlaine
