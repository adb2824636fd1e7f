#include "UI/Views/Treemap/BreadcrumbFit.h"

#include <algorithm>
#include <numeric>

namespace morlaine {

namespace {

/// Cuts the longest widths to one common width until the sum fits.
void cutLongest(std::vector<int>& widths, int available)
{
    std::vector<int> sorted = widths;
    std::ranges::sort(sorted);
    int cap = 0;
    int left = std::max(available, 0);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        cap = left / static_cast<int>(sorted.size() - index);
        if (sorted[index] > cap) {
            break;
        }
        left -= sorted[index];
    }
    for (int& width : widths) {
        width = std::min(width, cap);
    }
}

/// The natural widths, with `count` folded steps.
BreadcrumbFit folding(std::size_t count, std::span<const int> nameWidths)
{
    const bool foldsFirst = count + 1 == nameWidths.size();
    BreadcrumbFit fit{{nameWidths.begin(), nameWidths.end()}, count == 0 || foldsFirst ? 0U : 1U, count};
    const auto first = fit.nameWidths.begin() + static_cast<std::ptrdiff_t>(fit.firstFolded);
    std::fill_n(first, count, 0);
    return fit;
}

int widthAroundNames(const BreadcrumbFit& fit, const BreadcrumbFit::Metrics& metrics)
{
    const int perStep = metrics.beforeName + metrics.betweenSteps;
    const int shownCount = static_cast<int>(fit.nameWidths.size() - fit.foldedCount);
    return shownCount * perStep + (fit.foldedCount == 0 ? 0 : perStep + metrics.foldedSteps);
}

/// The sum of the widths, each cut to `most`.
int sumOfWidths(std::span<const int> widths, int most)
{
    return std::accumulate(widths.begin(), widths.end(), 0,
                           [most](int sum, int width) { return sum + std::min(width, most); });
}

} // namespace

int naturalBreadcrumbWidth(std::span<const int> nameWidths, const BreadcrumbFit::Metrics& metrics)
{
    return std::accumulate(nameWidths.begin(), nameWidths.end(), 0) +
           static_cast<int>(nameWidths.size()) * (metrics.beforeName + metrics.betweenSteps);
}

BreadcrumbFit fitBreadcrumb(std::span<const int> nameWidths, int available, const BreadcrumbFit::Metrics& metrics)
{
    const auto roomForNames = [&](const BreadcrumbFit& fit) { return available - widthAroundNames(fit, metrics); };
    BreadcrumbFit fit = folding(0, nameWidths);
    while (fit.foldedCount + 1 < nameWidths.size() &&
           sumOfWidths(fit.nameWidths, metrics.leastName) > roomForNames(fit)) {
        fit = folding(fit.foldedCount + 1, nameWidths);
    }
    cutLongest(fit.nameWidths, roomForNames(fit));
    return fit;
}

HeaderWidths divideHeader(int available, int naturalBreadcrumb, int spacing)
{
    const int leastInfo = available * 2 / 5;
    const int breadcrumb = std::clamp(naturalBreadcrumb, 0, std::max(available - leastInfo - spacing, 0));
    return {breadcrumb, std::max(available - breadcrumb - spacing, 0)};
}

} // namespace morlaine
