#include "Support/PlainTreemap.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <numeric>

namespace morlaine::test {

namespace {

struct Item {
    FileNode node;
    double area = 0;
    Rect rect = {};
};

double worst(const std::vector<double>& row, double w)
{
    const double s = std::accumulate(row.begin(), row.end(), 0.0);
    if (s == 0) {
        return std::numeric_limits<double>::infinity();
    }
    const double w2 = w * w;
    const double s2 = s * s;
    double largest = 0;
    for (const double r : row) {
        const double ratio = std::max(w2 * r / s2, s2 / (w2 * r));
        if (std::isnan(ratio)) {
            return ratio;
        }
        largest = std::max(largest, ratio);
    }
    return largest;
}

std::vector<Item> squarify(std::deque<Item> remaining, Rect current)
{
    std::vector<Item> result;
    while (!remaining.empty()) {
        const double side = current.height < current.width ? current.height : current.width;
        if (side <= 0) {
            break;
        }
        std::vector<double> row;
        for (const Item& next : remaining) {
            std::vector<double> longer = row;
            longer.push_back(next.area);
            if (!row.empty() && !(worst(longer, side) <= worst(row, side))) {
                break;
            }
            row = longer;
        }
        const double rowSum = std::accumulate(row.begin(), row.end(), 0.0);
        const bool isWide = current.height <= current.width;
        const double thickness = rowSum / (isWide ? current.height : current.width);
        double offset = 0;
        for (const double area : row) {
            const double length = area / thickness;
            result.push_back(remaining.front());
            remaining.pop_front();
            result.back().rect = isWide ? Rect{current.x, current.y + offset, thickness, length}
                                        : Rect{current.x + offset, current.y, length, thickness};
            offset += length;
        }
        current = isWide ? Rect{current.x + thickness, current.y, current.width - thickness, current.height}
                         : Rect{current.x, current.y + thickness, current.width, current.height - thickness};
    }
    return result;
}

} // namespace

std::vector<TreemapRect> plainLayout(const FileNode& node, const Rect& rect, std::int64_t maxDepth,
                                     std::int64_t currentDepth)
{
    std::vector<TreemapRect> result;
    if (!(rect.width > 0) || !(rect.height > 0)) {
        return result;
    }
    std::deque<Item> items;
    std::int64_t total = 0;
    for (const FileNode& child : node.childrenOrNone()) {
        if (child.size() > 0) {
            items.push_back({child});
            total += child.size();
        }
    }
    for (Item& item : items) {
        item.area = (rect.width * rect.height * static_cast<double>(item.node.size())) / static_cast<double>(total);
    }
    for (const Item& item : squarify(std::move(items), rect)) {
        const Rect& r = item.rect;
        result.push_back({item.node, r, item.node.fileCategory().color(), currentDepth});
        const Rect inset{r.x + 3, r.y + 3, r.width - 6, r.height - 6};
        if (item.node.isDirectory() && currentDepth < maxDepth && inset.width > 12 && inset.height > 12) {
            std::ranges::copy(plainLayout(item.node, inset, maxDepth, currentDepth + 1), std::back_inserter(result));
        }
    }
    return result;
}

} // namespace morlaine::test
