#include "Support/PlainPicture.h"

#include "Support/TreeWalk.h"
#include "UI/Styles/Conversions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <unordered_set>
#include <vector>

namespace morlaine::test {

namespace {

using Channels = std::array<double, 3>;

Channels channelsOf(const QColor& color)
{
    return {color.red() * 1.0, color.green() * 1.0, color.blue() * 1.0};
}

class Picture {
public:
    Picture(const QSize& size, const QColor& ground)
        : m_size(size)
        , m_pixels(static_cast<std::size_t>(size.width() * size.height()), channelsOf(ground))
    {
    }

    /// Blends the part of `outer` that is not in `inner`; both in pixels.
    void fill(const QRectF& outer, const QRectF& inner, const QColor& color, double opacity)
    {
        const QRect touched = outer.toAlignedRect() & QRect({}, m_size);
        for (int y = touched.top(); y <= touched.bottom(); ++y) {
            for (int x = touched.left(); x <= touched.right(); ++x) {
                const double share = opacity * (areaIn(outer, x, y) - areaIn(inner, x, y));
                Channels& pixel = m_pixels[static_cast<std::size_t>(y * m_size.width() + x)];
                const Channels over = channelsOf(color);
                for (std::size_t channel = 0; channel < over.size(); ++channel) {
                    pixel[channel] = pixel[channel] * (1 - share) + over[channel] * share;
                }
            }
        }
    }

    [[nodiscard]] QImage image() const
    {
        QImage image(m_size, QImage::Format_RGB32);
        for (int y = 0; y < m_size.height(); ++y) {
            for (int x = 0; x < m_size.width(); ++x) {
                const Channels& pixel = m_pixels[static_cast<std::size_t>(y * m_size.width() + x)];
                image.setPixelColor(x, y, QColor(qRound(pixel[0]), qRound(pixel[1]), qRound(pixel[2])));
            }
        }
        return image;
    }

private:
    static double areaIn(const QRectF& rect, int x, int y)
    {
        const QRectF common = rect & QRectF(x, y, 1, 1);
        return common.width() * common.height();
    }

    QSize m_size;
    std::vector<Channels> m_pixels;
};

void stroke(Picture& picture, const Rect& rect, double scale, const QColor& color, double opacity, double width)
{
    const double half = width / 2;
    const auto scaled = [&](double by) {
        return QRectF((rect.x - by) * scale, (rect.y - by) * scale, (rect.width + 2 * by) * scale,
                      (rect.height + 2 * by) * scale);
    };
    const bool isHollow = rect.width > width && rect.height > width;
    picture.fill(scaled(half), isHollow ? scaled(-half) : QRectF(), color, opacity);
}

/// Of the types of the files inside, by bytes; nothing for a folder that is painted without it.
std::optional<QColor> groundOf(const FileNode& folder, const NodeIDSet& hits)
{
    Channels sum{};
    double total = 0;
    bool hasHit = hits.empty();
    walkTree(folder, [&](const FileNode& node) {
        hasHit = hasHit || (node.id() != folder.id() && hits.contains(node.id()));
        if (!node.isDirectory()) {
            const Channels color = channelsOf(toQColor(node.fileCategory().color()));
            std::ranges::transform(sum, color, sum.begin(),
                                   [&](double a, double b) { return a + b * static_cast<double>(node.size()); });
            total += static_cast<double>(node.size());
        }
    });
    return hasHit && total > 0
               ? std::optional(QColor(qRound(sum[0] / total), qRound(sum[1] / total), qRound(sum[2] / total)))
               : std::nullopt;
}

} // namespace

QImage plainPicture(const TreemapScene& scene)
{
    const double scale = scene.devicePixelRatio;
    const QSizeF size = QSizeF(scene.size) * scale;
    Picture picture({static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))},
                    scene.ground);
    std::vector<TreemapRect> rects(scene.layout->begin(), scene.layout->end());
    std::unordered_set<Uuid> open;
    for (const TreemapRect& item : rects) {
        open.insert(FileNode::at(item.node.tree(), item.node.tree().parentOf(item.node.position())).id());
    }
    std::ranges::stable_sort(rects, {}, &TreemapRect::depth);
    for (const TreemapRect& item : rects) {
        const Rect& r = item.rect;
        const QRectF inPixels(r.x * scale, r.y * scale, r.width * scale, r.height * scale);
        if (item.node.isDirectory()) {
            const auto ground = open.contains(item.id()) ? std::nullopt : groundOf(item.node, scene.highlightIDs);
            if (ground) {
                const double gap = std::min({1.0, r.width / 8, r.height / 8}) * scale;
                picture.fill(inPixels.adjusted(gap, gap, -gap, -gap), {}, *ground, 0.45);
            }
            const auto d = static_cast<double>(item.depth);
            stroke(picture, r, scale, Qt::white, 0.3 - 0.05 * d, std::max(2 - 0.5 * d, 0.5));
        } else {
            const bool isDimmed = !scene.highlightIDs.empty() && !scene.highlightIDs.contains(item.id());
            picture.fill(inPixels, {}, toQColor(item.color), isDimmed ? 0.15 : 1);
            stroke(picture, r, scale, Qt::black, 0.15, 0.5);
        }
    }
    return picture.image();
}

} // namespace morlaine::test
