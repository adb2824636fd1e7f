#include "UI/Views/Treemap/TreemapTile.h"

#include <algorithm>
#include <cstring>

namespace morlaine {

namespace {

using Pixel = TreemapTile::Pixel;
using Bytes = uchar __attribute__((vector_size(4)));

Pixel smaller(const Pixel& a, const Pixel& b)
{
    return a < b ? a : b;
}

Pixel larger(const Pixel& a, const Pixel& b)
{
    return a > b ? a : b;
}

QRgb rounded(const Pixel& pixel)
{
    constexpr QRgb opaque = 0xff000000;
    const auto bytes = __builtin_convertvector(pixel + 0.5F, Bytes);
    QRgb color = 0;
    std::memcpy(&color, &bytes, sizeof color);
    return color | opaque;
}

} // namespace

TreemapTile::Pixel TreemapTile::pixelOf(QRgb color)
{
    Bytes bytes{};
    std::memcpy(&bytes, &color, sizeof color);
    return __builtin_convertvector(bytes, Pixel);
}

TreemapTile::TreemapTile(double scale) : m_scale(scale), m_values(std::size_t{side} * stride)
{
}

void TreemapTile::restart(const QRect& pixels, QRgb ground)
{
    Q_ASSERT(pixels.width() <= side && pixels.height() <= side);
    m_pixels = pixels;
    std::ranges::fill(m_values, pixelOf(ground));
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
inline TreemapTile::Axis TreemapTile::axis(double begin, double length, double halfLine, bool isHollow, int origin,
                                           int pixels) const
{
    const auto half = static_cast<float>(halfLine * m_scale);
    const auto from = static_cast<float>(begin * m_scale - origin);
    const auto to = static_cast<float>((begin + length) * m_scale - origin);
    Axis axis{.fill = {from, to}, .outer = {from - half, to + half}, .inner = {}};
    const auto last = static_cast<float>(pixels);
    if (!(axis.outer.begin < last && axis.outer.end > 0)) {
        return axis;
    }
    // Painting a few pixels with a share of 0 is faster than branching.
    axis.first = static_cast<int>(std::max(axis.outer.begin, 0.F));
    axis.end = static_cast<int>(std::min(axis.outer.end, last - 1)) + 1;
    if (isHollow) {
        axis.inner = {from + half, to - half};
    }
    const int afterInnerEdge = static_cast<int>(std::min(std::max(axis.inner.begin, 0.F), last)) + 1;
    const int beforeInnerEdge = static_cast<int>(std::min(std::max(axis.inner.end, 0.F), last));
    const int solidFirst = axis.first + (afterInnerEdge - axis.first + 3) / 4 * 4;
    const bool hasSolid = solidFirst < beforeInnerEdge;
    axis.solidFirst = hasSolid ? solidFirst : axis.end;
    axis.solidEnd = hasSolid ? beforeInnerEdge : axis.end;
    return axis;
}

void TreemapTile::paint(const Rect& rect, const Style& style)
{
    const bool isHollow = rect.width > style.lineWidth && rect.height > style.lineWidth;
    const double half = style.lineWidth / 2;
    const Axis rows = axis(rect.y, rect.height, half, isHollow, m_pixels.top(), m_pixels.height());
    const Axis columns = axis(rect.x, rect.width, half, isHollow, m_pixels.left(), m_pixels.width());
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
                Pixel* const pixels = m_values.data() + static_cast<std::ptrdiff_t>(y + row) * stride;
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
        Pixel* pixels = m_values.data() + static_cast<std::ptrdiff_t>(y) * stride + x;
        for (int row = 0; row < rowCount; ++row, pixels += stride) {
            const Four line = shares.outer * rows.outer[row] - shares.inner * rows.inner[row];
            const Four fill = shares.fill * rows.fill[row] * (1 - line);
            const Four kept = 1 - line - fill;
            const Four colored = isFilled ? fill : line;
            pixels[0] = pixels[0] * kept[0] + style.color * colored[0];
            pixels[1] = pixels[1] * kept[1] + style.color * colored[1];
            pixels[2] = pixels[2] * kept[2] + style.color * colored[2];
            pixels[3] = pixels[3] * kept[3] + style.color * colored[3];
        }
    }
}

void TreemapTile::paintSolid(Pixel* first, Pixel* end, const Style& style, float fill, float line)
{
    if (fill == 1 && line == 0) {
        std::fill(first, end, style.color);
    } else if (fill != 0 || line != 0) {
        const float filled = fill * (1 - line);
        const float kept = 1 - line - filled;
        const Pixel over = style.color * (style.fillOpacity > 0 ? filled : line);
        std::transform(first, end, first, [&over, kept](const Pixel& under) { return under * kept + over; });
    }
}

void TreemapTile::copyTo(uchar* bits, qsizetype bytesPerLine) const
{
    for (int y = 0; y < m_pixels.height(); ++y) {
        const Pixel* const row = m_values.data() + static_cast<std::ptrdiff_t>(y) * stride;
        auto* const line = reinterpret_cast<QRgb*>(bits + y * bytesPerLine);
        std::transform(row, row + m_pixels.width(), line, rounded);
    }
}

} // namespace morlaine
