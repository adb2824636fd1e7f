#pragma once

#include "Core/Treemap/TreemapLayout.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>

/// What a treemap shows and where, decided on values: nothing here knows a window. All lengths are in points.
namespace morlaine::TreemapDecisions {

/// How an outline is drawn: half of its width lies within the rectangle, half outside, and corners are sharp.
struct Outline {
    double opacity = 1; // 0...1
    double width = 1;
};

/// A folder's, white: it fades and thins with the depth.
[[nodiscard]] Outline folderOutline(std::int64_t depth);

inline constexpr Outline fileOutline{0.15, 0.5};     // black
inline constexpr Outline selectionOutline{1, 2.5};   // in the accent colour
inline constexpr Outline hoverOutline{0.8, 1.5};     // white
inline constexpr double selectionFillOpacity = 0.12; // in the accent colour
inline constexpr double hoverFillOpacity = 0.2;      // white

/// How much of the colour of what it holds lies on a folder that shows nothing of it: so little that nobody takes it
/// for a file.
inline constexpr double folderFillOpacity = 0.45;

/// How much of its colour a file keeps: less, where a search is on that has not found it.
[[nodiscard]] constexpr double fileFillOpacity(bool isDimmed)
{
    return isDimmed ? 0.15 : 1;
}

/// Where the labels of a file stand: its name, and its size below.
struct Labels {
    QRectF frame; // what they are clipped to
    QPointF name; // top left corners
    QPointF size;
};

inline constexpr double nameOpacity = 0.95; // white
inline constexpr double sizeOpacity = 0.75; // white

/// Whether a person could point at a rectangle, so that assistive programs are offered it.
[[nodiscard]] constexpr bool isLargeEnoughToPointAt(const Rect& rect)
{
    return rect.width > 4 && rect.height > 4;
}

/// Where the selection can go by a key.
enum class Move : std::uint8_t { left, right, up, down, largest, smallest };

/// The index of the rectangle to which the selection goes from that at `from`; the largest when nothing is selected.
/// Only files and folders that a person could point at are reached. A move into a folder reaches the folder first, and
/// from there what lies in it, at the side from which it was entered. Nothing where there is none in that direction.
[[nodiscard]] std::optional<std::size_t> destination(const TreemapLayout& layout, std::optional<std::size_t> from,
                                                     Move move);

/// Nothing for a rectangle that is too small for labels.
[[nodiscard]] std::optional<Labels> labelsIn(const Rect& rect);

/// What is told about the node under the pointer, else about the selected one.
struct Info {
    Color color;
    QString name;
    QString size; // in brackets

    friend bool operator==(const Info&, const Info&) = default;
};

[[nodiscard]] std::optional<Info> infoOf(const std::optional<TreemapRect>& hovered,
                                         const std::optional<FileNode>& selected);

/// The names of the folders from the one inside `shown` down to `item`, and of the item.
[[nodiscard]] QString pathBelow(const FileNode& shown, const FileNode& item);

/// What a canvas without rectangles says.
[[nodiscard]] QString textInsteadOfRects(bool hasRoot);

} // namespace morlaine::TreemapDecisions
