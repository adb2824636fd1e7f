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

/// One category's part of the file-type chart. Angles are in radians from three o'clock and grow clockwise on screen.
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

/// A line of the chart's legend. The line for what has no line of its own has no category.
struct LegendRow {
    std::optional<FileCategory> category;
    QString name;
    QString percentage;
};

/// The slices of a tree clockwise from twelve o'clock, largest first; equal ones in the order of
/// `FileCategory::allCases`. Their angles are shares of the root's own size, so that the ring stays open where the
/// files sum to less. None for a root without size.
[[nodiscard]] std::vector<PieSlice> computeSlices(const FileNode& root);

/// A share of `total`, which is at least 1, such as "12.5%".
[[nodiscard]] QString percentageText(std::int64_t size, std::int64_t total);

/// A slice in words, such as "Images: 1.2 GB".
[[nodiscard]] QString sliceText(const PieSlice& slice);

/// The largest five slices, and one row for the others where there are more.
[[nodiscard]] std::vector<LegendRow> legendRows(std::span<const PieSlice> slices, std::int64_t total);

} // namespace morlaine
