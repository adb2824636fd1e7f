#include "UI/Views/Treemap/TreemapDecisions.h"

#include "Utilities/ShownText.h"

#include <QStringList>

#include <algorithm>
#include <limits>
#include <string>

namespace morlaine::TreemapDecisions {

namespace {

constexpr double leastWidthOfLabels = 70;
constexpr double leastHeightOfLabels = 35;
constexpr double labelInset = 4;
constexpr double nameOffset = 2;
constexpr double sizeOffset = 14;

Info info(const FileNode& node, const Color& color)
{
    return {color, shownText(node.name()), QStringLiteral("(%1)").arg(QString::fromStdString(node.formattedSize()))};
}

/// Only the outermost folders can be hit.
bool canBePointedAt(const TreemapLayout::Item& item)
{
    return isLargeEnoughToPointAt(item.rect) && (!item.isFolder() || item.depth() == 0);
}

/// A rectangle, mirrored or turned so that the move goes to the right.
struct Turned {
    double begin;
    double end;
    double near; // the edges across the direction of the move
    double far;
};

Turned turned(const Rect& rect, Move move)
{
    const double right = rect.x + rect.width;
    const double bottom = rect.y + rect.height;
    switch (move) {
    case Move::left:
        return {-right, -rect.x, rect.y, bottom};
    case Move::up:
        return {-bottom, -rect.y, rect.x, right};
    case Move::down:
        return {rect.y, bottom, rect.x, right};
    default:
        return {rect.x, right, rect.y, bottom};
    }
}

/// The distance to a rectangle ahead, in points; sideways distance counts twice. Infinite if it is not ahead.
double distance(const Turned& from, double front, const Turned& to)
{
    constexpr double rounding = 0.01;
    if (to.begin < front - rounding) {
        return std::numeric_limits<double>::infinity();
    }
    const double middle = (from.near + from.far) / 2;
    const double aside = std::max({to.near - middle, middle - to.far, 0.0});
    return to.begin - front + 2 * aside;
}

std::optional<std::size_t> neighbour(const TreemapLayout& layout, std::size_t from, Move move)
{
    const std::span<const TreemapLayout::Item> items = layout.items();
    const Turned start = turned(items[from].rect, move);
    const bool entersFolder = items[from].isFolder() && from + 1 < items.size() && items[from + 1].depth() > 0;
    // A file in a folder can never begin at the folder's own edge.
    const double front = entersFolder ? start.begin + 1 : start.end;
    std::optional<std::size_t> nearest;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (canBePointedAt(items[index])) {
            if (const double far = distance(start, front, turned(items[index].rect, move)); far < least) {
                least = far;
                nearest = index;
            }
        }
    }
    return nearest;
}

std::optional<std::size_t> extreme(const TreemapLayout& layout, bool isLargest)
{
    const std::span<const TreemapLayout::Item> items = layout.items();
    std::optional<std::size_t> found;
    std::int64_t size = 0;
    for (std::size_t index = 0; index < items.size(); ++index) {
        const std::int64_t itemSize = layout.tree().sizeOf(items[index].node);
        if (canBePointedAt(items[index]) && (!found || (isLargest ? itemSize > size : itemSize < size))) {
            found = index;
            size = itemSize;
        }
    }
    return found;
}

} // namespace

std::optional<std::size_t> destination(const TreemapLayout& layout, std::optional<std::size_t> from, Move move)
{
    if (!from || move == Move::largest || move == Move::smallest) {
        return extreme(layout, move != Move::smallest);
    }
    return neighbour(layout, *from, move);
}

Outline folderOutline(std::int64_t depth)
{
    const auto d = static_cast<double>(depth);
    return {std::max(0.3 - 0.05 * d, 0.0), std::max(2.0 - 0.5 * d, 0.5)};
}

Rect folderFill(const Rect& folder)
{
    constexpr double widest = 1;
    constexpr double share = 1.0 / 8; // of small folders, so that they keep a fill
    const double gap = std::min({widest, folder.width * share, folder.height * share});
    return {folder.x + gap, folder.y + gap, folder.width - 2 * gap, folder.height - 2 * gap};
}

std::optional<Labels> labelsIn(const Rect& rect)
{
    if (!(rect.width > leastWidthOfLabels && rect.height > leastHeightOfLabels)) {
        return std::nullopt;
    }
    const QRectF frame(rect.x + labelInset, rect.y + labelInset, rect.width - 2 * labelInset,
                       rect.height - 2 * labelInset);
    return Labels{frame, frame.topLeft() + QPointF(0, nameOffset), frame.topLeft() + QPointF(0, sizeOffset)};
}

std::optional<Info> infoOf(const std::optional<TreemapRect>& hovered, const std::optional<FileNode>& selected)
{
    if (hovered) {
        return info(hovered->node, hovered->color);
    }
    if (selected) {
        return info(*selected, selected->fileCategory().color());
    }
    return std::nullopt;
}

QString pathBelow(const FileNode& shown, const FileNode& item)
{
    const Tree& tree = item.tree();
    QStringList names;
    for (Tree::Position node = item.position(); node > shown.position(); node = tree.parentOf(node)) {
        names.prepend(shownText(FileNode::at(tree, node).name()));
    }
    return names.join(QLatin1Char('/'));
}

QString textInsteadOfRects(bool hasRoot)
{
    return hasRoot ? QStringLiteral("Calculating Layout...")
                   : QStringLiteral("Select a folder to start scanning disk space");
}

} // namespace morlaine::TreemapDecisions
