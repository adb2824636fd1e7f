#pragma once

#include "Core/Models/FileNode.h"
#include "Utilities/FileCategory.h"
#include "Utilities/Uuid.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace morlaine {

/// One category's slice of the file-type chart. Angles are in radians from three o'clock, clockwise on screen.
struct PieSlice {
    PieSlice(FileCategory ofCategory, std::int64_t bytes, double start, double end)
        : category(ofCategory)
        , size(bytes)
        , startAngle(start)
        , endAngle(end)
    {
    }

    Uuid id = Uuid::random();
    FileCategory category;
    std::int64_t size; // bytes of all files of the category
    double startAngle;
    double endAngle;
};

/// A row of the chart's legend. The row for all remaining categories has no category.
struct LegendRow {
    std::optional<FileCategory> category;
    QString name;
    QString percentage;
};

/// The slices of a tree clockwise from twelve o'clock, largest first; equal sizes in the order of
/// `FileCategory::allCases`. Angles are shares of the root's own size, so that the ring stays open if the files sum to
/// less. Empty for a root of size 0.
[[nodiscard]] std::vector<PieSlice> computeSlices(const FileNode& root);

/// A percentage of `total` (at least 1), such as "12.5%".
[[nodiscard]] QString percentageText(std::int64_t size, std::int64_t total);

/// A slice as text, such as "Images: 1.2 GB".
[[nodiscard]] QString sliceText(const PieSlice& slice);

/// The five largest slices, and one row for the others if there are more.
[[nodiscard]] std::vector<LegendRow> legendRows(std::span<const PieSlice> slices, std::int64_t total);

} // namespace morlaine
