#include "UI/Views/Treemap/TreemapDecisions.h"

#include "Utilities/ShownText.h"

#include <algorithm>
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

} // namespace

Outline folderOutline(std::int64_t depth)
{
    const auto d = static_cast<double>(depth);
    return {std::max(0.3 - 0.05 * d, 0.0), std::max(2.0 - 0.5 * d, 0.5)};
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
