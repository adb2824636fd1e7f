#include "UI/Views/Treemap/TreemapTile.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace morlaine {

namespace {

using Pixel = TreemapTile::Pixel;
using Numbers = std::int32_t __attribute__((vector_size(16)));

Pixel smaller(const Pixel& a, const Pixel& b)
{
    return a < b ? a : b;
}

Pixel larger(const Pixel& a, const Pixel& b)
{
    return a > b ? a : b;
}

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

void TreemapTile::restart(const QRect& pixels, QRgb ground)
{
    Q_ASSERT(pixels.width() <= side && pixels.height() <= side);
    m_pixels = pixels;
    for (int channel = 0; channel < channels; ++channel) {
        std::fill_n(m_values.begin() + channel * planeSize, planeSize, pixelOf(ground)[channel]);
    }
}

inline TreemapTile::Four TreemapTile::Stretch::sharesFrom(int pixel) const
{
    const Four left = static_cast<float>(pixel) + Four{0, 1, 2, 3};
    return larger(smaller(Four{} + end, left + 1) - larger(Four{} + begin, left), Four{});
}

inline TreemapTile::Shares TreemapTile::sharesFrom(const Axis& axis, int pixel)
{
    return {axis.fill.sharesFrom(pixel), axis.outer.sharesFrom(pixel), axis.inner.sharesFrom(pixel)};
}

/// Compares before converting: far-away edges are outside the range of int.
inline TreemapTile::Axis TreemapTile::axis(double begin, double length, double halfLine, int origin, int pixels) const
{
    const auto half = static_cast<float>(halfLine * m_scale);
    const auto from = static_cast<float>(begin * m_scale - origin);
    const auto to = static_cast<float>((begin + length) * m_scale - origin);
    Axis axis{.fill = {from, to}, .outer = {from - half, to + half}, .inner = {from + half, to - half}};
    const auto last = static_cast<float>(pixels);
    if (!(axis.outer.begin < last && axis.outer.end > 0)) {
        return axis;
    }
    // Painting a few pixels with a share of 0 is faster than branching.
    axis.first = static_cast<int>(std::max(axis.outer.begin, 0.F));
    axis.end = static_cast<int>(std::min(axis.outer.end, last - 1)) + 1;
    axis.solidFirst = axis.end;
    axis.solidEnd = axis.end;
    if (axis.end - axis.first <= 4) {
        return axis;
    }
    const int afterInnerEdge = static_cast<int>(std::min(std::max(axis.inner.begin, 0.F), last)) + 1;
    const int beforeInnerEdge = static_cast<int>(std::min(std::max(axis.inner.end, 0.F), last));
    const int solidFirst = axis.first + (afterInnerEdge - axis.first + 3) / 4 * 4;
    if (solidFirst + 4 <= beforeInnerEdge) {
        axis.solidFirst = solidFirst;
        axis.solidEnd = solidFirst + (beforeInnerEdge - solidFirst) / 4 * 4;
    }
    return axis;
}

void TreemapTile::paint(const Rect& rect, const Style& style)
{
    const double half = style.lineWidth / 2;
    const Axis rows = axis(rect.y, rect.height, half, m_pixels.top(), m_pixels.height());
    const Axis columns = axis(rect.x, rect.width, half, m_pixels.left(), m_pixels.width());
    if (columns.first >= columns.end) {
        return;
    }
    for (int y = rows.first; y < rows.end; y += 4) {
        Shares shares = sharesFrom(rows, y);
        shares.fill *= style.fillOpacity;
        shares.outer *= style.lineOpacity;
        shares.inner *= style.lineOpacity;
        const int rowCount = std::min(rows.end - y, 4);
        paintEdges(columns.first, columns.solidFirst, columns, y, rowCount, shares, style);
        if (columns.solidFirst < columns.solidEnd) {
            for (int row = 0; row < rowCount; ++row) {
                float* const pixels = m_values.data() + static_cast<std::ptrdiff_t>(y + row) * stride;
                paintSolid(pixels + columns.solidFirst, pixels + columns.solidEnd, style, shares.fill[row],
                           shares.outer[row] - shares.inner[row]);
            }
            paintEdges(columns.solidEnd, columns.end, columns, y, rowCount, shares, style);
        }
    }
}

/// A pixel's share of the outline is its share of the outer rectangle minus that of the inner one. Pixels beyond `end`
/// have no share.
void TreemapTile::paintEdges(int first, int end, const Axis& columns, int y, int rowCount, const Shares& rows,
                             const Style& style)
{
    const bool isFilled = style.fillOpacity > 0;
    for (int x = first; x < end; x += 4) {
        const Shares shares = sharesFrom(columns, x);
        float* pixels = m_values.data() + static_cast<std::ptrdiff_t>(y) * stride + x;
        for (int row = 0; row < rowCount; ++row, pixels += stride) {
            const Four line = shares.outer * rows.outer[row] - shares.inner * rows.inner[row];
            const Four fill = shares.fill * rows.fill[row] * (1 - line);
            const Four kept = 1 - line - fill;
            const Four colored = isFilled ? fill : line;
            for (int channel = 0; channel < channels; ++channel) {
                float* const place = pixels + channel * planeSize;
                store(place, load(place) * kept + style.color[channel] * colored);
            }
        }
    }
}

void TreemapTile::paintSolid(float* first, const float* end, const Style& style, float fill, float line)
{
    if (fill == 0 && line == 0) {
        return;
    }
    const float filled = fill * (1 - line);
    const float kept = 1 - line - filled;
    const Four over = style.color * (style.fillOpacity > 0 ? filled : line);
    for (int channel = 0; channel < channels; ++channel) {
        for (std::ptrdiff_t x = channel * planeSize; x < channel * planeSize + (end - first); x += 4) {
            store(first + x, load(first + x) * kept + over[channel]);
        }
    }
}

void TreemapTile::copyTo(uchar* bits, qsizetype bytesPerLine) const
{
    for (int y = 0; y < m_pixels.height(); ++y) {
        const float* const row = m_values.data() + static_cast<std::ptrdiff_t>(y) * stride;
        uchar* const line = bits + y * bytesPerLine;
        for (int x = 0; x < m_pixels.width(); x += 4) {
            constexpr std::int32_t opaque = -1 << 24;
            const Numbers colors = rounded(load(row + x)) | rounded(load(row + planeSize + x)) << 8 |
                                   rounded(load(row + 2 * planeSize + x)) << 16 | opaque;
            const auto count = static_cast<std::size_t>(std::min(m_pixels.width() - x, 4));
            std::memcpy(line + static_cast<std::size_t>(x) * sizeof(QRgb), &colors, count * sizeof(QRgb));
        }
    }
}

} // namespace morlaine
