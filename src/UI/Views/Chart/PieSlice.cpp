#include "UI/Views/Chart/PieSlice.h"

#include "Core/Models/CategorySizes.h"
#include "Utilities/ByteCount.h"
#include "Utilities/CheckedMath.h"
#include "Utilities/Utf8.h"

#include <algorithm>
#include <numbers>

namespace morlaine {

namespace {

constexpr std::size_t ownRows = 5;

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

/// The categories with files, largest first.
std::vector<std::pair<FileCategory, std::int64_t>> sortedSizes(const FileNode& root)
{
    const CategorySizes sizes = categorySizes(root);
    std::vector<std::pair<FileCategory, std::int64_t>> pairs;
    for (const FileCategory category : FileCategory::allCases) {
        if (sizes[category] >= 1) {
            pairs.emplace_back(category, sizes[category]);
        }
    }
    std::ranges::stable_sort(pairs, std::greater{}, [](const auto& pair) { return pair.second; });
    return pairs;
}

} // namespace

std::vector<PieSlice> computeSlices(const FileNode& root)
{
    std::vector<PieSlice> slices;
    if (root.size() < 1) {
        return slices;
    }
    double angle = -90; // degrees
    for (const auto& [category, size] : sortedSizes(root)) {
        const double start = angle;
        angle += static_cast<double>(size) / static_cast<double>(root.size()) * 360;
        slices.emplace_back(category, size, radians(start), radians(angle));
    }
    return slices;
}

QString percentageText(std::int64_t size, std::int64_t total)
{
    return QString::asprintf("%.1f%%", static_cast<double>(size) * 100 / static_cast<double>(total));
}

QString sliceText(const PieSlice& slice)
{
    return textOfUtf8(slice.category.displayName()) + QStringLiteral(": ") +
           QString::fromStdString(byteCountText(slice.size));
}

std::vector<LegendRow> legendRows(std::span<const PieSlice> slices, std::int64_t total)
{
    std::vector<LegendRow> rows;
    for (const PieSlice& slice : slices.first(std::min(slices.size(), ownRows))) {
        rows.push_back({slice.category, textOfUtf8(slice.category.displayName()), percentageText(slice.size, total)});
    }
    if (slices.size() > ownRows) {
        std::int64_t others = 0;
        for (const PieSlice& slice : slices.subspan(ownRows)) {
            others = checkedAdd(others, slice.size);
        }
        rows.push_back({std::nullopt, QStringLiteral("Other Types"), percentageText(others, total)});
    }
    return rows;
}

} // namespace morlaine
