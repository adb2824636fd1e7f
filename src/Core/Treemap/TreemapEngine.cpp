#include "Core/Treemap/TreemapEngine.h"

#include "Utilities/CheckedMath.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>

namespace morlaine::TreemapEngine {

namespace {

// What follows relies on how doubles are rounded. No product in it feeds a sum, so that no compiler can fuse the two.
static_assert(std::numeric_limits<double>::is_iec559);

constexpr double margin = 3;        // points between the edge of a folder and what it holds
constexpr double smallestRoom = 12; // points that a folder must exceed, both ways, to show what it holds

struct LayoutItem {
    Tree::Position node;
    double area; // square points: positive, zero or infinite, never NaN
};

struct PlottedItem {
    Tree::Position node;
    Rect rect;
};

/// All that the shape of a row of items depends on. Rounded products and quotients of numbers that are not negative
/// still grow and shrink with their operands, so that among the aspect ratios of a row the largest is that of its
/// smallest or its largest area, to the last bit; and where any of them is NaN, one of these two is.
struct Row {
    std::size_t length = 0;
    double sum = 0;
    double smallest = std::numeric_limits<double>::infinity();
    double largest = 0;

    [[nodiscard]] Row with(double area) const
    {
        return {length + 1, sum + area, std::min(smallest, area), std::max(largest, area)};
    }

    /// The worst aspect ratio of the row along a side; NaN as soon as one ratio is.
    [[nodiscard]] double worst(double side) const
    {
        if (sum == 0) {
            return std::numeric_limits<double>::infinity();
        }
        const double side2 = side * side;
        const double sum2 = sum * sum;
        const double longest = side2 * largest / sum2;
        const double thinnest = sum2 / (side2 * smallest);
        return std::isnan(thinnest) ? thinnest : std::max(longest, thinnest);
    }
};

/// As many of the items, at least one, as do not make the row worse.
Row nextRow(std::span<const LayoutItem> items, double side)
{
    Row row = Row().with(items.front().area);
    double worst = row.worst(side);
    for (const LayoutItem& item : items.subspan(1)) {
        const Row longer = row.with(item.area);
        const double longerWorst = longer.worst(side);
        // Not the same as `>`: a NaN ends the row.
        if (!(longerWorst <= worst)) {
            break;
        }
        row = longer;
        worst = longerWorst;
    }
    return row;
}

/// The children that get a share of the rectangle, with their areas.
std::vector<LayoutItem> measuredChildren(const Tree& tree, Tree::Position folder, const Rect& rect)
{
    std::vector<LayoutItem> items;
    if (!(rect.width > 0) || !(rect.height > 0)) {
        return items;
    }
    std::int64_t total = 0;
    for (Tree::Position child = folder + 1; child < tree.endOf(folder); child = tree.endOf(child)) {
        if (const std::int64_t size = tree.sizeOf(child); size > 0) {
            total = checkedAdd(total, size);
            items.push_back({child, static_cast<double>(size)});
        }
    }
    for (LayoutItem& item : items) {
        const double size = item.area;
        item.area = rect.width * rect.height * size / static_cast<double>(total);
    }
    return items;
}

/// The children of one folder on their way into a rectangle, row after row.
class Level {
public:
    Level(const Tree& tree, Tree::Position folder, const Rect& rect, std::int64_t depth)
        : m_depth(depth)
        , m_items(measuredChildren(tree, folder, rect))
        , m_free(rect)
    {
    }

    [[nodiscard]] std::int64_t depth() const { return m_depth; }
    [[nodiscard]] std::size_t size() const { return m_items.size(); }

    /// The next child with its rectangle; nothing when all are placed or no room is left.
    [[nodiscard]] std::optional<PlottedItem> placeNext()
    {
        if (m_next == m_rowEnd && !startRow()) {
            return std::nullopt;
        }
        const LayoutItem& item = m_items[m_next++];
        const double length = item.area / m_thickness;
        const Rect rect = m_isColumn ? Rect{m_x, m_y + m_offset, m_thickness, length}
                                     : Rect{m_x + m_offset, m_y, length, m_thickness};
        m_offset += length;
        return PlottedItem{item.node, rect};
    }

private:
    /// Takes a column from the left of a free rectangle that is wide, a strip from the top of one that is tall.
    bool startRow()
    {
        const double side = m_free.height < m_free.width ? m_free.height : m_free.width;
        if (m_next == m_items.size() || side <= 0) {
            return false;
        }
        const Row row = nextRow(std::span(m_items).subspan(m_next), side);
        m_rowEnd = m_next + row.length;
        m_isColumn = m_free.height <= m_free.width;
        m_thickness = row.sum / (m_isColumn ? m_free.height : m_free.width);
        m_x = m_free.x;
        m_y = m_free.y;
        m_offset = 0;
        (m_isColumn ? m_free.x : m_free.y) += m_thickness;
        (m_isColumn ? m_free.width : m_free.height) -= m_thickness;
        return true;
    }

    std::int64_t m_depth;
    std::vector<LayoutItem> m_items;
    std::size_t m_next = 0;
    Rect m_free; // what the rows up to the present one leave

    // The present row: where it ends among the items, where it lies, and how much of it is taken.
    std::size_t m_rowEnd = 0;
    bool m_isColumn = false;
    double m_x = 0;
    double m_y = 0;
    double m_thickness = 0;
    double m_offset = 0;
};

Rect insetByMargin(const Rect& rect)
{
    return {rect.x + margin, rect.y + margin, rect.width - 2 * margin, rect.height - 2 * margin};
}

bool isWorthFilling(const Rect& room)
{
    return room.width > smallestRoom && room.height > smallestRoom;
}

} // namespace

std::vector<TreemapRect> computeLayout(const FileNode& node, const Rect& rect, std::int64_t maxDepth,
                                       std::int64_t currentDepth)
{
    const Tree& tree = node.tree();
    std::vector<TreemapRect> result;
    std::vector<Level> levels;
    levels.emplace_back(tree, node.position(), rect, currentDepth);
    result.reserve(levels.back().size());
    while (!levels.empty()) {
        const std::optional<PlottedItem> item = levels.back().placeNext();
        if (!item) {
            levels.pop_back();
            continue;
        }
        const std::int64_t depth = levels.back().depth();
        result.push_back({FileNode::at(tree, item->node), item->rect, tree.categoryOf(item->node).color(), depth});
        const Rect room = insetByMargin(item->rect);
        if (tree.isDirectory(item->node) && depth < maxDepth && isWorthFilling(room)) {
            levels.emplace_back(tree, item->node, room, depth + 1);
        }
    }
    return result;
}

} // namespace morlaine::TreemapEngine
