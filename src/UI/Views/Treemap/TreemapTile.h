#pragma once

#include "Utilities/Rect.h"

#include <QImage>
#include <QRect>

#include <array>
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

    /// A style in the form that painting needs, for all tiles of the same scale.
    class Brush;

    [[nodiscard]] static Pixel pixelOf(QRgb color);

    /// For a picture with `scale` pixels per point.
    explicit TreemapTile(double scale);

    [[nodiscard]] Brush brushOf(const Style& style) const;

    /// Starts the part `pixels` of the picture.
    void restart(const QRect& pixels, QRgb ground);

    /// Clips to the tile.
    void paint(const Rect& rect, const Brush& brush);

    /// Writes rounded, opaque RGB32 pixels to `bits`.
    void copyTo(uchar* bits, qsizetype bytesPerLine) const;

private:
    using Four = Pixel; // one number for each of four neighbouring pixels
    using Pair = double __attribute__((vector_size(16)));

    /// Left, top, right and bottom edge in pixels.
    using Edges = Pixel;

    /// A rectangle with its outline.
    struct Frame {
        Edges fill;
        Edges outer;
        Edges inner; // its edges cross if the outline has no hole, and nothing lies inside

        [[nodiscard]] Frame from(const Edges& origin) const { return {fill - origin, outer - origin, inner - origin}; }
    };

    /// The pixels `first`...`end` - 1 of an axis, of which `solidFirst`...`solidEnd` - 1 lie completely inside all
    /// three rectangles. `solidFirst - first` and `solidEnd - solidFirst` are multiples of four.
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

    static constexpr int stride = side + 4; // four columns and rows may be painted where only one is left
    static constexpr int channels = 3;
    static constexpr std::ptrdiff_t planeSize = std::ptrdiff_t{side + 4} * stride;

    template <int axis>
    [[nodiscard]] static Four between(const Edges& edges);
    template <int axis>
    [[nodiscard]] static Shares sharesOf(const Frame& frame);
    [[nodiscard]] static Shares rowShares(const Frame& frame, const Brush& brush);
    [[nodiscard]] Span columnsOf(const Frame& frame, int first, int end) const;
    void paintLarge(const Frame& frame, int x, int y, int xEnd, int yEnd, const Brush& brush);
    void paintEdges(int x, int xEnd, int y, int rowCount, const Frame& frame, const Shares& rows, const Brush& brush);
    template <bool isFilled>
    void paintSmall(const Frame& frame, int x, int y, int rowCount, const Brush& brush);
    template <bool isFilled>
    static void paintRow(float* pixels, int row, const Shares& columns, const Shares& rows, const Brush& brush);
    static void paintSolid(float* first, const float* end, float fill, float line, const Brush& brush);

    const double m_scale;
    QRect m_pixels;
    Pair m_origin{};   // left and top of the tile in pixels of the picture
    Edges m_far{};     // where left and top edges are out of reach, and with opposite signs right and bottom ones
    Edges m_highest{}; // the last pixels that right and bottom edges are taken to lie in
    std::vector<float> m_values; // a plane for each channel, so that four pixels are painted at once
};

class TreemapTile::Brush {
private:
    friend class TreemapTile;

    Edges m_beyond; // from the edges of the rectangle to those of the outline, to the outside
    Four m_fillOpacity;
    Four m_lineOpacity;
    std::array<Four, channels> m_color;
    bool m_isFilled;
};

} // namespace morlaine
