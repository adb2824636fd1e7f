#include "Core/Treemap/TreemapEngine.h"

#include "Utilities/CheckedMath.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

namespace morlaine::TreemapEngine {

namespace {

// The results depend on how doubles are rounded. No sum has a product as an operand, so that no compiler can fuse the
// two.
static_assert(std::numeric_limits<double>::is_iec559);

constexpr double margin = 3;        // points between the edge of a folder and its contents
constexpr double smallestRoom = 12; // points; a folder shows its contents only if it is larger both ways

struct LayoutItem {
    Tree::Position node;
    double area; // square points: positive, zero or infinite, never NaN
};

/// Everything that the shape of a row depends on. Rounding keeps products and quotients of non-negative numbers
/// monotonic. So the largest aspect ratio of a row is, to the last bit, that of its smallest or its largest area, and
/// if any ratio is NaN, one of these two is.
struct Row {
    std::size_t length = 0;
    double sum = 0;
    double smallest = std::numeric_limits<double>::infinity();
    double largest = 0;

    [[nodiscard]] Row with(double area) const
    {
        return {length + 1, sum + area, std::min(smallest, area), std::max(largest, area)};
    }

    /// The worst aspect ratio of the row along a side; NaN if any ratio is NaN.
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

/// Takes items, at least one, as long as they do not make the worst aspect ratio larger.
Row nextRow(std::span<const LayoutItem> items, double side)
{
    Row row = Row().with(items.front().area);
    double worst = row.worst(side);
    for (const LayoutItem& item : items.subspan(1)) {
        const Row longer = row.with(item.area);
        const double longerWorst = longer.worst(side);
        // Not the same as `>`: NaN ends the row.
        if (!(longerWorst <= worst)) {
            break;
        }
        row = longer;
        worst = longerWorst;
    }
    return row;
}

Rect insetByMargin(const Rect& rect)
{
    return {rect.x + margin, rect.y + margin, rect.width - 2 * margin, rect.height - 2 * margin};
}

bool isWorthFilling(const Rect& room)
{
    return room.width > smallestRoom && room.height > smallestRoom;
}

/// The children of one folder while they are placed in a rectangle, row after row.
struct Level {
    std::size_t begin; // index of the first item among the items of all levels
    Rect free;         // what previous rows have left

    // The current row: its unplaced items, where it lies, and how much of it is used.
    std::size_t next = 0;
    std::size_t rowEnd = 0;
    bool isColumn = false;
    double x = 0;
    double y = 0;
    double thickness = 0;
    double offset = 0;
};

/// One run of the layout. `m_items` holds the items of all levels, outermost first.
class Run {
public:
    Run(const Tree& tree, std::int64_t maxDepth, std::int64_t firstDepth, TreemapLayout& layout)
        : m_tree(tree)
        , m_maxDepth(maxDepth)
        , m_firstDepth(firstDepth)
        , m_layout(layout)
    {
    }

    void layOut(Tree::Position folder, const Rect& rect)
    {
        enter(folder, rect);
        while (!m_levels.empty()) {
            Level& level = m_levels.back();
            if (level.next < level.rowEnd || startRow(level)) {
                placeRow(level);
            } else {
                m_items.resize(level.begin);
                m_levels.pop_back();
            }
        }
    }

private:
    void enter(Tree::Position folder, const Rect& rect)
    {
        const std::size_t begin = m_items.size();
        m_levels.push_back({.begin = begin, .free = rect, .next = begin, .rowEnd = begin});
        if (rect.width > 0 && rect.height > 0) {
            measureChildren(folder, rect);
        }
    }

    /// Adds the children that get a share of the rectangle, with their areas.
    void measureChildren(Tree::Position folder, const Rect& rect)
    {
        const std::size_t begin = m_items.size();
        const Tree::Position end = m_tree.endOf(folder);
        std::int64_t total = 0;
        for (Tree::Position child = folder + 1; child < end; child = m_tree.endOf(child)) {
            if (const std::int64_t size = m_tree.sizeOf(child); size > 0) {
                total = checkedAdd(total, size);
                m_items.push_back({child, static_cast<double>(size)});
            }
        }
        for (LayoutItem& item : std::span(m_items).subspan(begin)) {
            const double size = item.area;
            item.area = rect.width * rect.height * size / static_cast<double>(total);
        }
    }

    /// A row is a column at the left of a wide free rectangle, or a strip at the top of a tall one.
    bool startRow(Level& level) const
    {
        Rect& free = level.free;
        const double side = free.height < free.width ? free.height : free.width;
        if (level.next == m_items.size() || side <= 0) {
            return false;
        }
        const Row row = nextRow(std::span(m_items).subspan(level.next), side);
        level.rowEnd = level.next + row.length;
        level.isColumn = free.height <= free.width;
        level.thickness = row.sum / (level.isColumn ? free.height : free.width);
        level.x = free.x;
        level.y = free.y;
        level.offset = 0;
        (level.isColumn ? free.x : free.y) += level.thickness;
        (level.isColumn ? free.width : free.height) -= level.thickness;
        return true;
    }

    /// Places items up to the end of the row, or up to a folder whose children come first; those form a level of their
    /// own.
    void placeRow(Level& level)
    {
        const std::size_t depth = m_levels.size() - 1;
        const bool mayNest = m_firstDepth + static_cast<std::int64_t>(depth) < m_maxDepth;
        while (level.next < level.rowEnd) {
            const LayoutItem item = m_items[level.next++];
            const double length = item.area / level.thickness;
            const Rect rect = level.isColumn ? Rect{level.x, level.y + level.offset, level.thickness, length}
                                             : Rect{level.x + level.offset, level.y, length, level.thickness};
            level.offset += length;
            m_layout.add(item.node, rect, depth);
            const Rect room = insetByMargin(rect);
            if (mayNest && isWorthFilling(room) && m_tree.isDirectory(item.node)) {
                enter(item.node, room);
                return;
            }
        }
    }

    const Tree& m_tree;
    const std::int64_t m_maxDepth;
    const std::int64_t m_firstDepth;
    TreemapLayout& m_layout;
    std::vector<LayoutItem> m_items;
    std::vector<Level> m_levels;
};

} // namespace

void layOut(const FileNode& node, const Rect& rect, TreemapLayout& layout, std::int64_t maxDepth,
            std::int64_t currentDepth)
{
    layout.restart(node);
    Run(node.tree(), maxDepth, currentDepth, layout).layOut(node.position(), rect);
}

std::vector<TreemapRect> computeLayout(const FileNode& node, const Rect& rect, std::int64_t maxDepth,
                                       std::int64_t currentDepth)
{
    TreemapLayout layout;
    layOut(node, rect, layout, maxDepth, currentDepth);
    std::vector<TreemapRect> result;
    result.reserve(layout.size());
    for (std::size_t index = 0; index < layout.size(); ++index) {
        result.push_back(layout[index]);
        result.back().depth += currentDepth;
    }
    return result;
}

} // namespace morlaine::TreemapEngine
