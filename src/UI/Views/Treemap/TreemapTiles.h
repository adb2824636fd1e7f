#pragma once

#include "Core/Treemap/TreemapLayout.h"
#include "Services/Search/SearchResults.h"
#include "Utilities/SharedWork.h"

#include <QColor>
#include <QImage>
#include <QPalette>
#include <QRect>
#include <QSize>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace morlaine {

class FolderGrounds;

/// Everything that a treemap's picture depends on, besides the application's font.
struct TreemapScene {
    std::shared_ptr<const TreemapLayout> layout;
    NodeIDSet highlightIDs;
    QColor ground; // the background colour
    QSize size;    // points
    double devicePixelRatio = 1;
    std::shared_ptr<const FolderGrounds> grounds{}; // of the layout; without it closed folders show the ground
};

/// A picture of all rectangles without labels, deeper ones over their folders, in the making. Tiles are shared with
/// helper threads, which keep the object alive. All functions are for one thread, which never waits for helpers.
class TreemapTiles {
public:
    /// Pictures with more rectangles get helpers: starting a thread costs as much as painting a thousand.
    static constexpr std::size_t worthAThread = 20'000;

    /// Starts helpers. Throws std::bad_alloc.
    [[nodiscard]] static std::shared_ptr<TreemapTiles> start(const TreemapScene& scene);

    /// Use `start`.
    explicit TreemapTiles(const TreemapScene& scene);
    ~TreemapTiles();
    TreemapTiles(const TreemapTiles&) = delete;
    TreemapTiles& operator=(const TreemapTiles&) = delete;

    /// Paints until `mustPause()`, which is asked after each tile. Returns the picture, at the resolution of the
    /// screen, once it is finished; if nothing is returned, call it again. Throws std::bad_alloc.
    [[nodiscard]] std::optional<QImage> paint(const std::function<bool()>& mustPause = [] { return false; });

    /// Nobody wants the picture any more: helpers end after the tile that each is at.
    void abandon() { m_work.abandon(); }

    /// The background: dark in light and dark appearance alike, since outlines of folders are white and dimmed files
    /// must not stand out.
    [[nodiscard]] static QColor ground(const QPalette& palette);

    [[nodiscard]] const TreemapScene& scene() const { return m_scene; }

private:
    class Painter;

    void help();
    [[nodiscard]] int columns() const;
    [[nodiscard]] int rows() const;
    [[nodiscard]] QRect rectOf(std::size_t tile) const;
    void copy(std::size_t tile, const std::vector<QRgb>& pixels);

    const TreemapScene m_scene;
    const TreemapLayout::Reading m_reading;
    const std::unique_ptr<Painter> m_painter; // not of the helpers
    QImage m_image;
    SharedWork<std::vector<QRgb>> m_work;
};

} // namespace morlaine
