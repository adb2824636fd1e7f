#pragma once

#include "Core/Models/FileNode.h"
#include "Core/Models/GrowingArray.h"
#include "Core/Models/TreemapRect.h"
#include "Utilities/Rect.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <utility>

namespace morlaine {

/// The rectangles of a treemap, each folder before its contents, in a compact form; the next layout reuses the memory.
/// Iterates as a range of TreemapRect, made on access. Keeps the tree alive. Any number of threads may read it at once.
class TreemapLayout {
public:
    struct Item {
        Rect rect;
        Tree::Position node;
        std::uint32_t kind; // what the functions tell; no bit-fields, which would be written one by one

        [[nodiscard]] bool isFolder() const noexcept { return (kind & 1U) != 0; }
        [[nodiscard]] FileCategory::Case category() const noexcept
        {
            return static_cast<FileCategory::Case>(kind >> 1 & 0xFU);
        }
        /// 0 for the children of the folder that was laid out.
        [[nodiscard]] std::uint32_t depth() const noexcept { return kind >> 5; }
    };

    /// The edges of the smallest rectangle around some items.
    struct Bounds {
        double left = std::numeric_limits<double>::infinity();
        double top = std::numeric_limits<double>::infinity();
        double right = -std::numeric_limits<double>::infinity();
        double bottom = -std::numeric_limits<double>::infinity();
    };

    /// Neighbours in the layout are close to each other, so that readers can skip most blocks without looking at their
    /// items.
    static constexpr std::size_t blockSize = 64;

    class Iterator;

    /// Protects a layout from changes while another thread reads it, from construction to destruction.
    class Reading;

    TreemapLayout() = default;

    /// Begins a new layout of nodes of the tree of `folder`.
    void restart(const FileNode& folder);
    void clear();

    /// Whether a `Reading` exists, so that nothing may be changed.
    [[nodiscard]] bool isBeingRead() const noexcept { return m_readings.load(std::memory_order_acquire) != 0; }

    void add(Tree::Position node, const Rect& rect, std::size_t depth);

    [[nodiscard]] std::size_t size() const noexcept { return m_items.size(); }
    [[nodiscard]] bool empty() const noexcept { return m_items.empty(); }
    [[nodiscard]] TreemapRect operator[](std::size_t index) const;
    [[nodiscard]] Iterator begin() const noexcept;
    [[nodiscard]] Iterator end() const noexcept;

    [[nodiscard]] std::span<const Item> items() const noexcept { return {m_items.begin(), m_items.end()}; }

    /// The bounds of each block of `blockSize` items.
    [[nodiscard]] std::span<const Bounds> blocks() const noexcept { return {m_blocks.begin(), m_blocks.end()}; }
    [[nodiscard]] std::span<const Item> itemsOfBlock(std::size_t block) const noexcept;

    /// The indices of the folders whose contents are not shown, ascending, except for the last rectangle.
    [[nodiscard]] std::span<const std::uint32_t> closedFolders() const noexcept
    {
        return {m_closedFolders.begin(), m_closedFolders.end()};
    }

    /// The tree of all nodes. Requires that there are rectangles.
    [[nodiscard]] const Tree& tree() const noexcept { return m_folder->tree(); }

    /// Whether both show the same folder of a tree.
    [[nodiscard]] bool isOfSameFolder(const TreemapLayout& other) const noexcept
    {
        return !empty() && !other.empty() && &tree() == &other.tree() &&
               m_folder->position() == other.m_folder->position();
    }

    /// The index of the first file at a point, else of the first (outermost) folder there. Left and top edges belong to
    /// a rectangle, right and bottom edges do not.
    [[nodiscard]] std::optional<std::size_t> hitTest(double x, double y) const noexcept;

    /// The index of the last rectangle at a point, which is the innermost one.
    [[nodiscard]] std::optional<std::size_t> innermostAt(double x, double y) const noexcept;

    /// The index of the first rectangle whose node has the id of `node`.
    [[nodiscard]] std::optional<std::size_t> indexOf(const FileNode& node) const noexcept;

private:
    std::optional<FileNode> m_folder;
    GrowingArray<Item> m_items;
    GrowingArray<Bounds> m_blocks;
    GrowingArray<std::uint32_t> m_closedFolders;
    mutable std::atomic<int> m_readings{0};
};

class TreemapLayout::Reading {
public:
    explicit Reading(std::shared_ptr<const TreemapLayout> layout) : m_layout(std::move(layout))
    {
        m_layout->m_readings.fetch_add(1, std::memory_order_relaxed);
    }
    ~Reading() { m_layout->m_readings.fetch_sub(1, std::memory_order_release); }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

private:
    std::shared_ptr<const TreemapLayout> m_layout;
};

class TreemapLayout::Iterator {
public:
    using iterator_concept = std::forward_iterator_tag;
    using iterator_category = std::input_iterator_tag;
    using value_type = TreemapRect;
    using difference_type = std::ptrdiff_t;

    Iterator() = default;
    Iterator(const TreemapLayout& layout, std::size_t index) : m_layout(&layout), m_index(index) {}

    [[nodiscard]] TreemapRect operator*() const { return (*m_layout)[m_index]; }
    Iterator& operator++() noexcept
    {
        ++m_index;
        return *this;
    }
    Iterator operator++(int) noexcept { return {*m_layout, m_index++}; }

    friend bool operator==(const Iterator&, const Iterator&) = default;

private:
    const TreemapLayout* m_layout = nullptr;
    std::size_t m_index = 0;
};

inline TreemapLayout::Iterator TreemapLayout::begin() const noexcept
{
    return {*this, 0};
}

inline TreemapLayout::Iterator TreemapLayout::end() const noexcept
{
    return {*this, size()};
}

[[gnu::always_inline]] inline void TreemapLayout::add(Tree::Position node, const Rect& rect, std::size_t depth)
{
    if (m_items.size() % blockSize == 0) {
        m_blocks.push_back({});
    }
    Bounds& bounds = m_blocks.back();
    bounds.left = std::min(bounds.left, rect.x);
    bounds.top = std::min(bounds.top, rect.y);
    bounds.right = std::max(bounds.right, rect.x + rect.width);
    bounds.bottom = std::max(bounds.bottom, rect.y + rect.height);
    if (!empty() && m_items.back().isFolder() && depth <= m_items.back().depth()) {
        m_closedFolders.push_back(static_cast<std::uint32_t>(size() - 1));
    }
    const FileCategory::Case category = tree().categoryOf(node);
    const std::uint32_t kind = static_cast<std::uint32_t>(category) << 1U | (tree().isDirectory(node) ? 1U : 0U);
    m_items.push_back({rect, node, kind | static_cast<std::uint32_t>(depth) << 5U});
}

} // namespace morlaine
