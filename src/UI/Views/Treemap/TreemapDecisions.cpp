#include "UI/Views/Treemap/TreemapDecisions.h"

#include "Utilities/ShownText.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace morlaine::TreemapDecisions {

namespace {

constexpr double leastWidthOfLabels = 70;
constexpr double leastHeightOfLabels = 35;
constexpr double labelInset = 4;
constexpr double nameOffset = 2;
constexpr double sizeOffset = 14;
constexpr double dimmedOpacity = 0.15;

bool contains(const Rect& rect, const QPointF& point)
{
    return point.x() >= rect.x && point.x() < rect.x + rect.width && point.y() >= rect.y &&
           point.y() < rect.y + rect.height;
}

Info info(const FileNode& node, const Color& color)
{
    return {color, shownText(node.name()), QStringLiteral("(%1)").arg(QString::fromStdString(node.formattedSize()))};
}

} // namespace

std::optional<std::size_t> hitTest(std::span<const TreemapRect> rects, const QPointF& point)
{
    std::optional<std::size_t> folder;
    for (std::size_t position = 0; position < rects.size(); ++position) {
        if (!contains(rects[position].rect, point)) {
            continue;
        }
        if (!rects[position].node.isDirectory()) {
            return position;
        }
        if (!folder) {
            folder = position;
        }
    }
    return folder;
}

std::optional<std::size_t> positionOf(std::span<const TreemapRect> rects, const Uuid& id)
{
    const auto found = std::ranges::find(rects, id, &TreemapRect::id);
    return found == rects.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - rects.begin()));
}

std::vector<std::uint32_t> paintingOrder(std::span<const TreemapRect> rects)
{
    std::vector<std::uint32_t> order(rects.size());
    std::iota(order.begin(), order.end(), std::uint32_t{0});
    std::ranges::stable_sort(order, {}, [rects](std::uint32_t position) { return rects[position].depth; });
    return order;
}

Outline folderOutline(std::int64_t depth)
{
    const auto d = static_cast<double>(depth);
    return {std::max(0.3 - 0.05 * d, 0.0), std::max(2.0 - 0.5 * d, 0.5)};
}

double fileFillOpacity(const NodeIDSet& highlightIDs, const FileNode& node)
{
    return highlightIDs.empty() || highlightIDs.contains(node) ? 1 : dimmedOpacity;
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

QString textInsteadOfRects(bool hasRoot)
{
    return hasRoot ? QStringLiteral("Calculating Layout...")
                   : QStringLiteral("Select a folder to start scanning disk space");
}

} // namespace morlaine::TreemapDecisions
