#include "UI/Views/Treemap/TreemapTile.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace morlaine {

namespace {

using Pixel = TreemapTile::Pixel;
using Numbers = std::int32_t __attribute__((vector_size(16)));

#if defined(__SSE__)
// One instruction each; the compiler makes four of a comparison and a choice.
Pixel smaller(const Pixel& a, const Pixel& b)
{
    return _mm_min_ps(a, b);
}

Pixel larger(const Pixel& a, const Pixel& b)
{
    return _mm_max_ps(a, b);
}
#else
Pixel smaller(const Pixel& a, const Pixel& b)
{
    return a < b ? a : b;
}

Pixel larger(const Pixel& a, const Pixel& b)
{
    return a > b ? a : b;
}
#endif

Pixel load(const float* place)
{
    Pixel four;
    std::memcpy(&four, place, sizeof four);
    return four;
}

void store(float* place, const Pixel& four)
{
    std::memcpy(place, &four, sizeof four);
}

Numbers rounded(const Pixel& four)
{
    return __builtin_convertvector(four + 0.5F, Numbers);
}

} // namespace

TreemapTile::Pixel TreemapTile::pixelOf(QRgb color)
{
    return Pixel{static_cast<float>(qBlue(color)), static_cast<float>(qGreen(color)), static_cast<float>(qRed(color)),
                 0};
}

TreemapTile::TreemapTile(double scale) : m_scale(scale), m_values(channels * planeSize)
{
}

TreemapTile::Brush TreemapTile::brushOf(const Style& style) const
{
    const auto half = static_cast<float>(style.lineWidth / 2 * m_scale);
    Brush brush;
    brush.m_beyond = Edges{-half, -half, half, half};
    brush.m_fillOpacity = Four{} + style.fillOpacity;
    brush.m_lineOpacity = Four{} + style.lineOpacity;
    brush.m_color = {Four{} + style.color[0], Four{} + style.color[1], Four{} + style.color[2]};
    brush.m_isFilled = style.fillOpacity > 0;
    return brush;
}

void TreemapTile::restart(const QRect& pixels, QRgb ground)
{
    Q_ASSERT(pixels.width() <= side && pixels.height() <= side);
    constexpr float any = std::numeric_limits<float>::infinity();
    const auto width = static_cast<float>(pixels.width());
    const auto height = static_cast<float>(pixels.height());
    m_pixels = pixels;
    m_origin = Pair{static_cast<double>(pixels.left()), static_cast<double>(pixels.top())};
    m_far = Edges{width, height, 0, 0};
    m_highest = Edges{any, any, width - 1, height - 1};
    for (int channel = 0; channel < channels; ++channel) {
        std::fill_n(m_values.begin() + channel * planeSize, planeSize, pixelOf(ground)[channel]);
    }
}

/// The share of each of the four pixels from 0 on between two edges; `axis` is 0 for columns, 1 for rows.
template <int axis>
[[gnu::always_inline]] inline TreemapTile::Four TreemapTile::between(const Edges& edges)
{
    constexpr Four from{0, 1, 2, 3};
    constexpr Four to{1, 2, 3, 4};
    const Four begin = __builtin_shufflevector(edges, edges, axis, axis, axis, axis);
    const Four end = __builtin_shufflevector(edges, edges, axis + 2, axis + 2, axis + 2, axis + 2);
    return larger(smaller(end, to) - larger(begin, from), Four{});
}

template <int axis>
[[gnu::always_inline]] inline TreemapTile::Shares TreemapTile::sharesOf(const Frame& frame)
{
    return {between<axis>(frame.fill), between<axis>(frame.outer), between<axis>(frame.inner)};
}

[[gnu::always_inline]] inline TreemapTile::Shares TreemapTile::rowShares(const Frame& frame, const Brush& brush)
{
    const Shares rows = sharesOf<1>(frame);
    return {rows.fill * brush.m_fillOpacity, rows.outer * brush.m_lineOpacity, rows.inner * brush.m_lineOpacity};
}

/// Paints four pixels. A pixel's share of the outline is its share of the outer rectangle minus that of the inner one.
template <bool isFilled>
[[gnu::always_inline]] inline void TreemapTile::paintRow(float* pixels, int row, const Shares& columns,
                                                         const Shares& rows, const Brush& brush)
{
    const Four line = columns.outer * rows.outer[row] - columns.inner * rows.inner[row];
    const Four open = 1 - line;
    const Four fill = columns.fill * rows.fill[row] * open;
    const Four kept = open - fill;
    const Four colored = isFilled ? fill : line;
    float* const green = pixels + planeSize;
    float* const red = green + planeSize;
    store(pixels, load(pixels) * kept + brush.m_color[0] * colored);
    store(green, load(green) * kept + brush.m_color[1] * colored);
    store(red, load(red) * kept + brush.m_color[2] * colored);
}

/// At most four columns and rows from `x` and `y` on, where the frame's origin lies.
template <bool isFilled>
[[gnu::always_inline]] inline void TreemapTile::paintSmall(const Frame& frame, int x, int y, int rowCount,
                                                           const Brush& brush)
{
    float* const values = m_values.data() + static_cast<std::ptrdiff_t>(y) * stride + x;
    const Shares columns = sharesOf<0>(frame);
    const Shares rows = rowShares(frame, brush);
    // Painting rows without a share is faster than a branch that the processor cannot foresee.
    paintRow<isFilled>(values, 0, columns, rows, brush);
    paintRow<isFilled>(values + stride, 1, columns, rows, brush);
    paintRow<isFilled>(values + 2 * stride, 2, columns, rows, brush);
    if (rowCount == 4) {
        paintRow<isFilled>(values + 3 * stride, 3, columns, rows, brush);
    }
}

void TreemapTile::paint(const Rect& rect, const Brush& brush)
{
    using Floats = float __attribute__((vector_size(8)));
    using Halves = std::int64_t __attribute__((vector_size(16)));
    const Pair corner{rect.x, rect.y};
    const Pair size{rect.width, rect.height};
    const auto begin = __builtin_convertvector(corner * m_scale - m_origin, Floats);
    const auto end = __builtin_convertvector((corner + size) * m_scale - m_origin, Floats);
    const Edges edges = __builtin_shufflevector(begin, end, 0, 1, 2, 3);
    const Frame frame{.fill = edges, .outer = edges + brush.m_beyond, .inner = edges - brush.m_beyond};
    // Left and top edge lie before the end of the tile, right and bottom edge behind its beginning.
    const auto touches = reinterpret_cast<Halves>(frame.outer * Edges{1, 1, -1, -1} < m_far);
    if ((touches[0] & touches[1]) != -1) {
        return;
    }
    // Limits before converting: far-away edges are outside the range of int.
    constexpr float any = std::numeric_limits<float>::infinity();
    constexpr Edges lowest{0, 0, -any, -any};
    const Numbers pixels = __builtin_convertvector(smaller(larger(frame.outer, lowest), m_highest), Numbers);
    const Numbers steps = __builtin_shufflevector(pixels, pixels, 2, 3, 2, 3) - pixels; // from the first to the last
    constexpr std::int64_t belowFour = 0x3'00000003;
    if ((reinterpret_cast<Halves>(steps)[0] & ~belowFour) != 0) {
        paintLarge(frame, pixels[0], pixels[1], pixels[2] + 1, pixels[3] + 1, brush);
        return;
    }
    const auto corners = __builtin_convertvector(pixels, Edges);
    const Frame near = frame.from(__builtin_shufflevector(corners, corners, 0, 1, 0, 1));
    if (brush.m_isFilled) {
        paintSmall<true>(near, pixels[0], pixels[1], steps[1] + 1, brush);
    } else {
        paintSmall<false>(near, pixels[0], pixels[1], steps[1] + 1, brush);
    }
}

inline TreemapTile::Span TreemapTile::columnsOf(const Frame& frame, int first, int end) const
{
    if (end - first > 4) {
        const auto last = static_cast<float>(m_pixels.width());
        const int afterInnerEdge = static_cast<int>(std::min(std::max(frame.inner[0], 0.F), last)) + 1;
        const int beforeInnerEdge = static_cast<int>(std::min(std::max(frame.inner[2], 0.F), last));
        const int solidFirst = first + (afterInnerEdge - first + 3) / 4 * 4;
        if (solidFirst + 4 <= beforeInnerEdge) {
            return {first, solidFirst, solidFirst + (beforeInnerEdge - solidFirst) / 4 * 4, end};
        }
    }
    return {first, end, end, end};
}

void TreemapTile::paintLarge(const Frame& frame, int x, int y, int xEnd, int yEnd, const Brush& brush)
{
    const Span columns = columnsOf(frame, x, xEnd);
    for (; y < yEnd; y += 4) {
        const auto top = static_cast<float>(y);
        const Shares rows = rowShares(frame.from(Edges{0, top, 0, top}), brush);
        const int rowCount = std::min(yEnd - y, 4);
        paintEdges(columns.first, columns.solidFirst, y, rowCount, frame, rows, brush);
        if (columns.solidFirst < columns.solidEnd) {
            for (int row = 0; row < rowCount; ++row) {
                float* const values = m_values.data() + static_cast<std::ptrdiff_t>(y + row) * stride;
                paintSolid(values + columns.solidFirst, values + columns.solidEnd, rows.fill[row],
                           rows.outer[row] - rows.inner[row], brush);
            }
            paintEdges(columns.solidEnd, columns.end, y, rowCount, frame, rows, brush);
        }
    }
}

/// Pixels beyond `xEnd` have no share.
void TreemapTile::paintEdges(int x, int xEnd, int y, int rowCount, const Frame& frame, const Shares& rows,
                             const Brush& brush)
{
    for (; x < xEnd; x += 4) {
        const auto left = static_cast<float>(x);
        const Shares columns = sharesOf<0>(frame.from(Edges{left, 0, left, 0}));
        float* const values = m_values.data() + static_cast<std::ptrdiff_t>(y) * stride + x;
        for (int row = 0; row < rowCount; ++row) {
            if (brush.m_isFilled) {
                paintRow<true>(values + row * stride, row, columns, rows, brush);
            } else {
                paintRow<false>(values + row * stride, row, columns, rows, brush);
            }
        }
    }
}

void TreemapTile::paintSolid(float* first, const float* end, float fill, float line, const Brush& brush)
{
    if (fill == 0 && line == 0) {
        return;
    }
    const float filled = fill * (1 - line);
    const float kept = 1 - line - filled;
    for (int channel = 0; channel < channels; ++channel) {
        const Four over = brush.m_color[static_cast<std::size_t>(channel)] * (brush.m_isFilled ? filled : line);
        for (std::ptrdiff_t x = channel * planeSize; x < channel * planeSize + (end - first); x += 4) {
            store(first + x, load(first + x) * kept + over);
        }
    }
}

void TreemapTile::copyTo(uchar* bits, qsizetype bytesPerLine) const
{
    constexpr qsizetype bytesPerPixel = sizeof(QRgb);
    for (int y = 0; y < m_pixels.height(); ++y) {
        const float* const row = m_values.data() + static_cast<std::ptrdiff_t>(y) * stride;
        uchar* const line = bits + y * bytesPerLine;
        const auto copy = [row, line](int x, int count) {
            constexpr std::int32_t opaque = -1 << 24;
            const Numbers colors = rounded(load(row + x)) | rounded(load(row + planeSize + x)) << 8 |
                                   rounded(load(row + 2 * planeSize + x)) << 16 | opaque;
            std::memcpy(line + x * bytesPerPixel, &colors, static_cast<std::size_t>(count * bytesPerPixel));
        };
        int x = 0;
        for (; x + 4 <= m_pixels.width(); x += 4) {
            copy(x, 4);
        }
        if (x < m_pixels.width()) {
            copy(x, m_pixels.width() - x);
        }
    }
}

} // namespace morlaine
