#pragma once

#include "Core/Treemap/TreemapLayout.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>

/// What a treemap shows and where: pure functions on values. All lengths are in points.
namespace morlaine::TreemapDecisions {

/// An outline with sharp corners; half of its width lies inside the rectangle, half outside.
struct Outline {
    double opacity = 1; // 0...1
    double width = 1;
};

/// The white outline of a folder: thinner and fainter with the depth.
[[nodiscard]] Outline folderOutline(std::int64_t depth);

inline constexpr Outline fileOutline{0.15, 0.5};     // black
inline constexpr Outline selectionOutline{1, 2.5};   // in the accent colour
inline constexpr Outline hoverOutline{0.8, 1.5};     // white
inline constexpr double selectionFillOpacity = 0.12; // in the accent colour
inline constexpr double hoverFillOpacity = 0.2;      // white

/// The opacity of a closed folder's fill, in the colour of its contents: low enough to differ from a file.
inline constexpr double folderFillOpacity = 0.45;

/// The part of a closed folder that is filled. The background stays visible along the edges: deep outlines are too
/// faint to keep neighbours with contents of the same type apart.
[[nodiscard]] Rect folderFill(const Rect& folder);

/// The opacity of a file's fill; lower for a file that the search has not found.
[[nodiscard]] constexpr double fileFillOpacity(bool isDimmed)
{
    return isDimmed ? 0.15 : 1;
}

/// The places of a file's labels: its name, and its size below.
struct Labels {
    QRectF frame; // the labels are clipped to it
    QPointF name; // top left corner of the name; `size` likewise
    QPointF size;
};

inline constexpr double nameOpacity = 0.95; // white
inline constexpr double sizeOpacity = 0.75; // white

/// Whether a rectangle is large enough to point at. Only such rectangles are offered to assistive technology.
[[nodiscard]] constexpr bool isLargeEnoughToPointAt(const Rect& rect)
{
    return rect.width > 4 && rect.height > 4;
}

/// Moves of the selection by keyboard.
enum class Move : std::uint8_t { left, right, up, down, largest, smallest };

/// The index of the rectangle that a move from the one at `from` selects; the largest one if nothing is selected.
/// Reaches only files, and folders that are large enough to point at. A move into a folder selects the folder first,
/// then its contents at the side of entry. Nothing if there is no rectangle in that direction.
[[nodiscard]] std::optional<std::size_t> destination(const TreemapLayout& layout, std::optional<std::size_t> from,
                                                     Move move);

/// Nothing if the rectangle is too small for labels.
[[nodiscard]] std::optional<Labels> labelsIn(const Rect& rect);

/// The info about the node under the pointer, otherwise about the selected node.
struct Info {
    Color color;
    QString name;
    QString size; // in parentheses

    friend bool operator==(const Info&, const Info&) = default;
};

[[nodiscard]] std::optional<Info> infoOf(const std::optional<TreemapRect>& hovered,
                                         const std::optional<FileNode>& selected);

/// The path of `item` relative to the folder `shown`, built from names.
[[nodiscard]] QString pathBelow(const FileNode& shown, const FileNode& item);

/// The text of a canvas without rectangles.
[[nodiscard]] QString textInsteadOfRects(bool hasRoot);

} // namespace morlaine::TreemapDecisions
