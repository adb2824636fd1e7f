#pragma once

#include "Utilities/Rect.h"

#include <QImage>
#include <QRect>

#include <cstddef>
#include <vector>

namespace morlaine {

/// A part of a treemap's picture in floating point: thousands of rectangles may contribute to one pixel, each by a tiny
/// share. Small enough for processor caches. Edges may lie anywhere inside a pixel, which then gets its share of the
/// colour.
class TreemapTile {
public:
    static constexpr int side = 128; // maximum width and height in pixels

    /// Blue, green and red, 0...255; the fourth number is not used.
    using Pixel = float __attribute__((vector_size(16)));

    /// How a rectangle is painted: the fill, then an outline with sharp corners, centred on the edge. `color` is that
    /// of the fill; a filled rectangle has a black outline. Without a fill it is the colour of the outline.
    struct Style {
        Pixel color{};
        float fillOpacity = 0; // 0...1; 0 if the outline has the colour
        float lineOpacity = 0;
        double lineWidth = 0; // points
    };

    [[nodiscard]] static Pixel pixelOf(QRgb color);

    /// For a picture with `scale` pixels per point.
    explicit TreemapTile(double scale);

    /// Starts the part `pixels` of the picture.
    void restart(const QRect& pixels, QRgb ground);

    /// Clips to the tile.
    void paint(const Rect& rect, const Style& style);

    /// Writes rounded, opaque RGB32 pixels to `bits`.
    void copyTo(uchar* bits, qsizetype bytesPerLine) const;

private:
    using Four = Pixel; // one number for each of four neighbouring pixels

    /// Left, top, right and bottom edge in pixels from the corner of the tile.
    using Edges = Pixel;

    /// A rectangle with its outline.
    struct Frame {
        Edges fill;
        Edges outer;
        Edges inner; // its edges cross if the outline has no hole, and nothing lies inside
    };

    /// One axis of a frame. It touches the pixels `first`...`end` - 1 of the tile. The pixels `solidFirst`...`solidEnd`
    /// - 1 lie completely inside all three rectangles. `solidFirst - first` and `solidEnd - solidFirst` are multiples
    /// of four.
    struct Span {
        int first;
        int solidFirst;
        int solidEnd;
        int end;
    };

    /// The share of each of four pixels along one axis in the rectangle, and inside the outer and the inner edge of its
    /// outline.
    struct Shares {
        Four fill;
        Four outer;
        Four inner;
    };

    static constexpr int stride = side + 4; // four pixels may be painted where only one is left
    static constexpr int channels = 3;
    static constexpr std::ptrdiff_t planeSize = std::ptrdiff_t{side} * stride;

    [[nodiscard]] Span columnsOf(const Frame& frame, int first, int end) const;
    template <int axis>
    [[nodiscard]] static Shares sharesFrom(const Frame& frame, int pixel);
    void paintEdges(int first, int end, const Frame& frame, int y, int rowCount, const Shares& rows,
                    const Style& style);
    static void paintSolid(float* first, const float* end, const Style& style, float fill, float line);

    const double m_scale;
    QRect m_pixels;
    std::vector<float> m_values; // a plane for each channel, so that four pixels are painted at once
};

} // namespace morlaine
