#include "UI/Views/Treemap/TreemapTile.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

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

/// `axis` is 0 for columns, 1 for rows.
template <int axis>
inline TreemapTile::Shares TreemapTile::sharesFrom(const Frame& frame, int pixel)
{
    const Four from = static_cast<float>(pixel) + Four{0, 1, 2, 3};
    const Four to = from + 1;
    const auto inside = [&](const Edges& edges) {
        return larger(smaller(Four{} + edges[axis + 2], to) - larger(Four{} + edges[axis], from), Four{});
    };
    return {inside(frame.fill), inside(frame.outer), inside(frame.inner)};
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

void TreemapTile::paint(const Rect& rect, const Style& style)
{
    using Pair = double __attribute__((vector_size(16)));
    using Floats = float __attribute__((vector_size(8)));
    constexpr float any = std::numeric_limits<float>::infinity();
    const Pair origin{static_cast<double>(m_pixels.left()), static_cast<double>(m_pixels.top())};
    const Pair corner{rect.x, rect.y};
    const Pair size{rect.width, rect.height};
    const auto begin = __builtin_convertvector(corner * m_scale - origin, Floats);
    const auto end = __builtin_convertvector((corner + size) * m_scale - origin, Floats);
    const auto half = static_cast<float>(style.lineWidth / 2 * m_scale);
    const Edges beyond{-half, -half, half, half};
    const Edges edges = __builtin_shufflevector(begin, end, 0, 1, 2, 3);
    const Frame frame{.fill = edges, .outer = edges + beyond, .inner = edges - beyond};
    const auto width = static_cast<float>(m_pixels.width());
    const auto height = static_cast<float>(m_pixels.height());
    if (!(frame.outer[0] < width && frame.outer[1] < height && frame.outer[2] > 0 && frame.outer[3] > 0)) {
        return;
    }
    // Compares before converting: far-away edges are outside the range of int.
    const auto pixels = __builtin_convertvector(
        smaller(larger(frame.outer, Edges{0, 0, -any, -any}), Edges{any, any, width - 1, height - 1}), Numbers);
    const Span columns = columnsOf(frame, pixels[0], pixels[2] + 1);
    const int rowEnd = pixels[3] + 1;
    // Painting a few pixels with a share of 0 is faster than branching.
    for (int y = pixels[1]; y < rowEnd; y += 4) {
        Shares shares = sharesFrom<1>(frame, y);
        shares.fill *= style.fillOpacity;
        shares.outer *= style.lineOpacity;
        shares.inner *= style.lineOpacity;
        const int rowCount = std::min(rowEnd - y, 4);
        paintEdges(columns.first, columns.solidFirst, frame, y, rowCount, shares, style);
        if (columns.solidFirst < columns.solidEnd) {
            for (int row = 0; row < rowCount; ++row) {
                float* const values = m_values.data() + static_cast<std::ptrdiff_t>(y + row) * stride;
                paintSolid(values + columns.solidFirst, values + columns.solidEnd, style, shares.fill[row],
                           shares.outer[row] - shares.inner[row]);
            }
            paintEdges(columns.solidEnd, columns.end, frame, y, rowCount, shares, style);
        }
    }
}

/// A pixel's share of the outline is its share of the outer rectangle minus that of the inner one. Pixels beyond `end`
/// have no share.
inline void TreemapTile::paintEdges(int first, int end, const Frame& frame, int y, int rowCount, const Shares& rows,
                                    const Style& style)
{
    const bool isFilled = style.fillOpacity > 0;
    for (int x = first; x < end; x += 4) {
        const Shares shares = sharesFrom<0>(frame, x);
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
