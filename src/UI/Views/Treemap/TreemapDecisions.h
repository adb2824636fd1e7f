#pragma once

#include "Core/Models/TreemapRect.h"
#include "Services/Search/SearchResults.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// What a treemap shows and where, decided on values: nothing here knows a window. All lengths are in points. `rects`
/// is always a layout in the engine's order, folders before what lies in them.
namespace morlaine::TreemapDecisions {

/// The position in `rects` of what a click on `point` means: the first file there, else the first folder, which is the
/// outermost one. Left and top edges belong to a rectangle, right and bottom edges do not.
[[nodiscard]] std::optional<std::size_t> hitTest(std::span<const TreemapRect> rects, const QPointF& point);

/// The position of the first rectangle of the node with that id.
[[nodiscard]] std::optional<std::size_t> positionOf(std::span<const TreemapRect> rects, const Uuid& id);

/// The positions in the order of painting: by depth, and as they stand within one depth.
[[nodiscard]] std::vector<std::uint32_t> paintingOrder(std::span<const TreemapRect> rects);

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

/// How much of its colour a file keeps: less while a search is on that has not found it.
[[nodiscard]] double fileFillOpacity(const NodeIDSet& highlightIDs, const FileNode& node);

/// Where the labels of a file stand: its name, and its size below.
struct Labels {
    QRectF frame; // what they are clipped to
    QPointF name; // top left corners
    QPointF size;
};

inline constexpr double nameOpacity = 0.95; // white
inline constexpr double sizeOpacity = 0.75; // white

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

/// What a canvas without rectangles says.
[[nodiscard]] QString textInsteadOfRects(bool hasRoot);

} // namespace morlaine::TreemapDecisions
