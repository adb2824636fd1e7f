#pragma once

#include "Core/Models/CategorySizes.h"
#include "Core/Models/LowerNames.h"
#include "Core/Models/TreeArrays.h"
#include "Utilities/FileUrl.h"

#include <atomic>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace morlaine {

/// A whole tree of files and folders in a few arrays, immutable. TreeArrays describes the layout: walking the tree
/// means going through the arrays. Each FileNode keeps its tree alive. Any thread.
class Tree {
public:
    using Position = TreeArrays::Position;

    /// The number of nodes.
    [[nodiscard]] Position size() const noexcept { return m_nodes.size(); }

    [[nodiscard]] const Uuid& idOf(Position node) const noexcept { return m_nodes.ids[node]; }
    [[nodiscard]] std::int64_t sizeOf(Position node) const noexcept { return m_nodes.sizes[node]; }
    [[nodiscard]] bool isDirectory(Position node) const noexcept { return m_nodes.has(node, TreeArrays::isFolder); }
    [[nodiscard]] bool hasList(Position node) const noexcept { return m_nodes.has(node, TreeArrays::hasList); }
    [[nodiscard]] FileCategory categoryOf(Position node) const noexcept
    {
        return static_cast<FileCategory::Case>(m_nodes.kinds[node] & TreeArrays::category);
    }
    [[nodiscard]] std::string_view nameOf(Position node) const noexcept { return m_nodes.name(node); }

    /// The folder that contains the node; the root is its own parent.
    [[nodiscard]] Position parentOf(Position node) const noexcept { return m_nodes.parents[node]; }

    /// One behind the last node inside `node`, however deep: the position of its next sibling, if it has one. The
    /// contents of `node` begin at `node + 1`.
    [[nodiscard]] Position endOf(Position node) const noexcept { return m_nodes.ends[node]; }

    [[nodiscard]] FileUrl urlOf(Position node) const;
    /// Whether the url is not that of the parent with one more component. True for the root.
    [[nodiscard]] bool hasUrlOutsideFolder(Position node) const noexcept { return m_nodes.hasLocationOfItsOwn(node); }

    /// The exact bytes of the last component of the url.
    [[nodiscard]] std::string_view lastComponentOf(Position node) const noexcept { return m_nodes.lastComponent(node); }

    /// The sizes of the files in `node` by category; nothing where a sum exceeds 64 bits. Cached for the root.
    [[nodiscard]] std::optional<CategorySizes> categorySizes(Position node = 0) const;

    /// The number of files and of folders in `node`, itself included. Children of a file are not counted. Cached for
    /// the root, one pass for other nodes.
    [[nodiscard]] std::pair<std::int64_t, std::int64_t> countsOf(Position node) const noexcept
    {
        return node == 0 ? m_counts : countsInside(node);
    }

    /// The arrays themselves, and the lower-case names that a search needs.
    [[nodiscard]] const TreeArrays& arrays() const noexcept { return m_nodes; }
    [[nodiscard]] const LowerNames& lowerNames() const noexcept { return m_lowerNames; }

    /// Pairs of nodes with the same id: the later one and the first one. Empty for a scanned tree.
    [[nodiscard]] std::span<const std::pair<Position, Position>> repeatedIds() const noexcept { return m_repeatedIds; }

    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

private:
    friend class FileNode;
    friend class TreeBuilder;

    struct Release {
        void operator()(const Tree* tree) const noexcept { tree->release(); }
    };

    explicit Tree(TreeArrays&& nodes);
    ~Tree() = default;

    [[nodiscard]] std::optional<CategorySizes> sumOfFiles(Position node) const;
    [[nodiscard]] std::pair<std::int64_t, std::int64_t> countsInside(Position node) const noexcept;

    void retain() const noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    void release() const noexcept
    {
        if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

    TreeArrays m_nodes;
    LowerNames m_lowerNames;
    std::optional<CategorySizes> m_categorySizes;
    std::pair<std::int64_t, std::int64_t> m_counts;
    std::vector<std::pair<Position, Position>> m_repeatedIds;
    mutable std::atomic<std::uint32_t> m_references{1};
};

} // namespace morlaine
