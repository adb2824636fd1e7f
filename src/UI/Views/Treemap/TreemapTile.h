#pragma once

#include "Utilities/Rect.h"

#include <QImage>
#include <QRect>

#include <vector>

namespace morlaine {

/// A part of a treemap's picture while rectangles are laid over each other, in floating point: a pixel may get its
/// colour from thousands of rectangles, each of which covers next to nothing of it. Small enough for the caches of a
/// processor. The edge of a rectangle may lie anywhere within a pixel, which then takes its share of the colour.
class TreemapTile {
public:
    static constexpr int side = 128; // the most pixels each way

    /// The four channels of a colour as they lie in memory, 0...255.
    using Pixel = float __attribute__((vector_size(16)));

    /// What is painted for a rectangle: the fill, then an outline with sharp corners, half of its width on each side of
    /// the edge. One of the two has a colour: the outline of a rectangle that is filled is black.
    struct Style {
        Pixel color{};
        float fillOpacity = 0; // 0...1; 0 where the outline has the colour
        float lineOpacity = 0;
        double lineWidth = 0; // points
    };

    [[nodiscard]] static Pixel pixelOf(QRgb color);

    /// Of a picture with `scale` pixels to a point.
    explicit TreemapTile(double scale);

    /// Begins the part `pixels` of the picture.
    void restart(const QRect& pixels, QRgb ground);

    /// What lies outside the tile is left out.
    void paint(const Rect& rect, const Style& style);

    /// Rounds into opaque (RGB32) pixels, of which the first is at `bits`.
    void copyTo(uchar* bits, qsizetype bytesPerLine) const;

private:
    using Four = Pixel; // a number for each of four neighbouring pixels

    /// From `begin` to `end` along one axis, in pixels from the edge of the tile.
    struct Stretch {
        float begin = 0;
        float end = 0;

        /// How much of each of four pixels lies within.
        [[nodiscard]] Four sharesFrom(int pixel) const;
    };

    /// One axis of a rectangle and its outline. The pixels of the tile that it touches are those in
    /// `first`...`end` - 1; those in `solidFirst`...`solidEnd` - 1 lie wholly within all three stretches. What comes
    /// before them is a multiple of four.
    struct Axis {
        Stretch fill;
        Stretch outer;
        Stretch inner; // empty for an outline without a hole
        int first = 0;
        int solidFirst = 0;
        int solidEnd = 0;
        int end = 0;
    };

    /// How much of each of four pixels lies within a rectangle, and within the outer and the inner edges of its
    /// outline.
    struct Shares {
        Four fill;
        Four outer;
        Four inner;
    };

    static constexpr int stride = side + 4; // so that four pixels may be painted where one is left

    [[nodiscard]] Axis axis(double begin, double length, double halfLine, bool isHollow, int origin, int pixels) const;
    [[nodiscard]] static Shares sharesFrom(const Axis& axis, int pixel);
    void paintEdges(int first, int end, const Axis& columns, int y, int rowCount, const Shares& rows,
                    const Style& style);
    static void paintSolid(Pixel* first, Pixel* end, const Style& style, float fill, float line);

    const double m_scale;
    QRect m_pixels;
    std::vector<Pixel> m_values;
};

} // namespace morlaine
