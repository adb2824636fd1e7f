#include "UI/Views/Treemap/TreemapTiles.h"

#include "Platform/Background.h"
#include "UI/Styles/Contrast.h"
#include "UI/Styles/Conversions.h"
#include "UI/Views/Treemap/FolderGrounds.h"
#include "UI/Views/Treemap/TreemapDecisions.h"
#include "UI/Views/Treemap/TreemapTile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

namespace morlaine {

namespace {

namespace Decide = TreemapDecisions;

using Brush = TreemapTile::Brush;

/// The brush for each kind of rectangle, made once for a picture.
class Brushes {
public:
    explicit Brushes(const TreemapTile& tile)
    {
        for (const FileCategory category : FileCategory::allCases) {
            const TreemapTile::Pixel color = TreemapTile::pixelOf(toQColor(category.color()).rgb());
            for (const bool isDimmed : {false, true}) {
                m_files[isDimmed][static_cast<std::size_t>(FileCategory::Case(category))] =
                    tile.brushOf({color, static_cast<float>(Decide::fileFillOpacity(isDimmed)),
                                  static_cast<float>(Decide::fileOutline.opacity), Decide::fileOutline.width});
            }
        }
        for (std::size_t depth = 0; depth < m_folders.size(); ++depth) {
            const auto [opacity, width] = Decide::folderOutline(static_cast<std::int64_t>(depth));
            m_folders[depth] = tile.brushOf({.color = TreemapTile::pixelOf(QColor(Qt::white).rgb()),
                                             .lineOpacity = static_cast<float>(opacity),
                                             .lineWidth = width});
        }
    }

    [[nodiscard]] const Brush& file(std::size_t category, bool isDimmed) const { return m_files[isDimmed][category]; }
    [[nodiscard]] const Brush& folder(std::size_t depth) const
    {
        return m_folders[std::min(depth, m_folders.size() - 1)];
    }

private:
    std::array<std::array<Brush, 16>, 2> m_files;
    std::array<Brush, 8> m_folders; // deeper folders use the last one
};

bool isTouched(const TreemapLayout::Bounds& area, const Rect& rect)
{
    return rect.x < area.right && rect.y < area.bottom && rect.x + rect.width > area.left &&
           rect.y + rect.height > area.top;
}

bool isTouched(const TreemapLayout::Bounds& area, const TreemapLayout::Bounds& block)
{
    return block.left < area.right && block.top < area.bottom && block.right > area.left && block.bottom > area.top;
}

QSize pixelsOf(const TreemapScene& scene)
{
    const QSizeF size = QSizeF(scene.size) * scene.devicePixelRatio;
    return {static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))};
}

qsizetype bytesPerLine(const QRect& tile)
{
    return tile.width() * static_cast<qsizetype>(sizeof(QRgb));
}

uchar* bitsOf(QImage& image, const QRect& tile)
{
    return image.bits() + tile.top() * image.bytesPerLine() + tile.left() * static_cast<qsizetype>(sizeof(QRgb));
}

} // namespace

/// Paints the rectangles in a part of the picture, each over the previous ones.
class TreemapTiles::Painter {
public:
    explicit Painter(const TreemapScene& scene)
        : m_scene(scene)
        , m_isSearching(!scene.highlightIDs.empty())
        , m_tile(scene.devicePixelRatio)
        , m_brushes(m_tile)
    {
    }

    void paint(const QRect& pixels, uchar* bits, qsizetype bytesPerLine)
    {
        m_tile.restart(pixels, m_scene.ground.rgb());
        // A folder's margin keeps its contents more than a point away from the outlines around it. If pixels are not
        // larger than a point, no pixel shows both, and painting in layout order gives the same picture as painting by
        // depth.
        if (m_scene.devicePixelRatio >= 1) {
            paintRects(pixels, [](const TreemapLayout::Item&) { return true; });
        } else {
            std::uint32_t deepest = 0;
            for (const TreemapLayout::Item& item : m_scene.layout->items()) {
                deepest = std::max(deepest, item.depth());
            }
            for (std::uint32_t depth = 0; depth <= deepest; ++depth) {
                paintRects(pixels, [depth](const TreemapLayout::Item& item) { return item.depth() == depth; });
            }
        }
        m_tile.copyTo(bits, bytesPerLine);
    }

private:
    template <typename Predicate>
    void paintRects(const QRect& pixels, Predicate isWanted)
    {
        constexpr double reach = 1; // in points: the widest outline extends this far beyond an edge
        const double scale = m_scene.devicePixelRatio;
        const TreemapLayout::Bounds area{pixels.left() / scale - reach, pixels.top() / scale - reach,
                                         (pixels.right() + 1) / scale + reach, (pixels.bottom() + 1) / scale + reach};
        const TreemapLayout& layout = *m_scene.layout;
        for (std::size_t block = 0; block < layout.blocks().size(); ++block) {
            if (!isTouched(area, layout.blocks()[block])) {
                continue;
            }
            for (const TreemapLayout::Item& item : layout.itemsOfBlock(block)) {
                if (isTouched(area, item.rect) && isWanted(item)) {
                    paintItem(item);
                }
            }
        }
    }

    void paintItem(const TreemapLayout::Item& item)
    {
        const Tree& tree = m_scene.layout->tree();
        if (!item.isFolder()) {
            const bool isDimmed = m_isSearching && !m_scene.highlightIDs.contains(tree, item.node);
            m_tile.paint(item.rect, m_brushes.file(item.category(), isDimmed));
            return;
        }
        const auto index = static_cast<std::size_t>(&item - m_scene.layout->items().data());
        const std::optional<QRgb> ground = m_scene.grounds ? m_scene.grounds->colorAt(index) : std::nullopt;
        if (ground && (!m_isSearching || m_scene.highlightIDs.containsAnyInside(tree, item.node))) {
            const Brush brush =
                m_tile.brushOf({TreemapTile::pixelOf(*ground), static_cast<float>(Decide::folderFillOpacity)});
            m_tile.paint(Decide::folderFill(item.rect), brush);
        }
        m_tile.paint(item.rect, m_brushes.folder(item.depth()));
    }

    const TreemapScene& m_scene;
    const bool m_isSearching;
    TreemapTile m_tile;
    const Brushes m_brushes;
};

QColor TreemapTiles::ground(const QPalette& palette)
{
    constexpr QColor dark(24, 26, 30);
    return mixed(palette.color(QPalette::Window), dark, 0.09);
}

std::shared_ptr<TreemapTiles> TreemapTiles::start(const TreemapScene& scene)
{
    auto tiles = std::make_shared<TreemapTiles>(scene);
    Background::startHelpers("paint", scene.layout->size() / worthAThread, [tiles] { tiles->help(); });
    return tiles;
}

TreemapTiles::TreemapTiles(const TreemapScene& scene)
    : m_scene(scene)
    , m_reading(scene.layout)
    , m_painter(std::make_unique<Painter>(m_scene))
    , m_image(pixelsOf(scene), QImage::Format_RGB32)
    , m_work(static_cast<std::size_t>(columns() * rows()))
{
    if (m_image.isNull()) {
        throw std::bad_alloc();
    }
    m_image.setDevicePixelRatio(scene.devicePixelRatio);
}

TreemapTiles::~TreemapTiles() = default;

std::optional<QImage> TreemapTiles::paint(const std::function<bool()>& mustPause)
{
    const bool isFinished = m_work.goOn(
        [&](std::size_t tile) {
            m_painter->paint(rectOf(tile), bitsOf(m_image, rectOf(tile)), m_image.bytesPerLine());
        },
        [&](std::size_t tile, const std::vector<QRgb>& pixels) { copy(tile, pixels); }, mustPause);
    return isFinished ? std::optional(std::move(m_image)) : std::nullopt;
}

/// On a helper thread.
void TreemapTiles::help()
{
    Painter painter(m_scene);
    m_work.help([&](std::size_t tile, std::vector<QRgb>& pixels) {
        const QRect rect = rectOf(tile);
        pixels.resize(static_cast<std::size_t>(rect.width() * rect.height()));
        painter.paint(rect, reinterpret_cast<uchar*>(pixels.data()), bytesPerLine(rect));
    });
}

int TreemapTiles::columns() const
{
    return (pixelsOf(m_scene).width() + TreemapTile::side - 1) / TreemapTile::side;
}

int TreemapTiles::rows() const
{
    return (pixelsOf(m_scene).height() + TreemapTile::side - 1) / TreemapTile::side;
}

QRect TreemapTiles::rectOf(std::size_t tile) const
{
    const int column = static_cast<int>(tile) % columns();
    const int row = static_cast<int>(tile) / columns();
    constexpr int side = TreemapTile::side;
    return QRect(column * side, row * side, side, side) & QRect({}, pixelsOf(m_scene));
}

void TreemapTiles::copy(std::size_t tile, const std::vector<QRgb>& pixels)
{
    const QRect rect = rectOf(tile);
    const QRgb* from = pixels.data();
    uchar* to = bitsOf(m_image, rect);
    for (int y = 0; y < rect.height(); ++y) {
        std::memcpy(to, from, static_cast<std::size_t>(bytesPerLine(rect)));
        from += rect.width();
        to += m_image.bytesPerLine();
    }
}

} // namespace morlaine
