#include "UI/Views/Treemap/RectangleFiller.h"

#include <algorithm>
#include <cmath>

namespace morlaine {

namespace {

constexpr QRgb alternateBytes = 0x00ff00ff;
constexpr QRgb opaque = 0xff000000;

/// Bytes 0 and 2 of both, weighed with `share` and 256 - `share`.
QRgb mixedBytes(QRgb over, QRgb under, QRgb share)
{
    constexpr QRgb half = 0x00800080;
    return (((over & alternateBytes) * share + (under & alternateBytes) * (256 - share) + half) >> 8) & alternateBytes;
}

/// `share` of 256.
QRgb mixed(QRgb over, QRgb under, QRgb share)
{
    return opaque | mixedBytes(over, under, share) | (mixedBytes(over >> 8, under >> 8, share) << 8);
}

QRgb shareOf(double opacity)
{
    return static_cast<QRgb>(qRound(opacity * 256));
}

} // namespace

RectangleFiller::RectangleFiller(QImage& image, double scale)
    : m_bits(image.bits())
    , m_bytesPerLine(image.bytesPerLine())
    , m_width(image.width())
    , m_height(image.height())
    , m_scale(scale)
{
    Q_ASSERT(image.format() == QImage::Format_RGB32);
}

double RectangleFiller::Stretch::shareAt(int pixel) const
{
    if (pixel < first || pixel > last) {
        return 0;
    }
    return pixel == first ? firstShare : pixel == last ? lastShare : 1;
}

RectangleFiller::Stretch RectangleFiller::stretch(double begin, double end, int length)
{
    const double from = std::clamp<double>(begin, 0, length);
    const double to = std::clamp<double>(end, 0, length);
    if (!(from < to)) {
        return {};
    }
    Stretch stretch;
    stretch.first = static_cast<int>(from);
    stretch.last = static_cast<int>(std::ceil(to)) - 1;
    stretch.firstShare = std::min(to, stretch.first + 1.0) - from;
    stretch.lastShare = to - std::max<double>(stretch.last, from);
    return stretch;
}

void RectangleFiller::fill(const Rect& rect, const QColor& color, double opacity)
{
    const Stretch columns = stretch(rect.x * m_scale, (rect.x + rect.width) * m_scale, m_width);
    const Stretch rows = stretch(rect.y * m_scale, (rect.y + rect.height) * m_scale, m_height);
    if (columns.last < columns.first) {
        return;
    }
    for (int y = rows.first; y <= rows.last; ++y) {
        fillRow(y, columns, color.rgb(), opacity * rows.shareAt(y));
    }
}

void RectangleFiller::fillRow(int y, const Stretch& columns, QRgb color, double opacity)
{
    auto* const row = reinterpret_cast<QRgb*>(m_bits + y * m_bytesPerLine);
    QRgb* const first = row + columns.first;
    QRgb* const last = row + columns.last;
    *first = mixed(color, *first, shareOf(opacity * columns.firstShare));
    if (first == last) {
        return;
    }
    const QRgb share = shareOf(opacity);
    if (share == 256) {
        std::fill(first + 1, last, color);
    } else {
        std::transform(first + 1, last, first + 1, [color, share](QRgb under) { return mixed(color, under, share); });
    }
    *last = mixed(color, *last, shareOf(opacity * columns.lastShare));
}

void RectangleFiller::stroke(const Rect& rect, const QColor& color, double opacity, double width)
{
    const double half = width / 2;
    const Rect outer{rect.x - half, rect.y - half, rect.width + width, rect.height + width};
    if (!(rect.width > width && rect.height > width)) {
        fill(outer, color, opacity);
        return;
    }
    const Stretch columns = stretch(outer.x * m_scale, (outer.x + outer.width) * m_scale, m_width);
    const Stretch rows = stretch(outer.y * m_scale, (outer.y + outer.height) * m_scale, m_height);
    const Stretch innerColumns = stretch((rect.x + half) * m_scale, (rect.x + rect.width - half) * m_scale, m_width);
    const Stretch innerRows = stretch((rect.y + half) * m_scale, (rect.y + rect.height - half) * m_scale, m_height);
    if (columns.last < columns.first) {
        return;
    }
    for (int y = rows.first; y <= rows.last; ++y) {
        const double innerShare = innerRows.shareAt(y);
        if (innerShare == 0 || innerColumns.last < innerColumns.first) {
            fillRow(y, columns, color.rgb(), opacity * rows.shareAt(y));
        } else {
            strokeRow(y, columns, innerColumns, color.rgb(), opacity, {rows.shareAt(y), innerShare});
        }
    }
}

/// Each pixel gets what the outer rectangle covers of it less what the inner one does.
void RectangleFiller::strokeRow(int y, const Stretch& outer, const Stretch& inner, QRgb color, double opacity,
                                RowShares shares)
{
    auto* const row = reinterpret_cast<QRgb*>(m_bits + y * m_bytesPerLine);
    const auto mixPixel = [&](int x) {
        const double share = shares.outer * outer.shareAt(x) - shares.inner * inner.shareAt(x);
        row[x] = mixed(color, row[x], shareOf(opacity * share));
    };
    for (int x = outer.first; x <= inner.first; ++x) {
        mixPixel(x);
    }
    if (shares.inner < shares.outer) {
        for (int x = inner.first + 1; x < inner.last; ++x) {
            mixPixel(x);
        }
    }
    for (int x = std::max(inner.last, inner.first + 1); x <= outer.last; ++x) {
        mixPixel(x);
    }
}

} // namespace morlaine
