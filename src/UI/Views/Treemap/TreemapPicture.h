#pragma once

#include "UI/Views/Treemap/TreemapTiles.h"

#include <QPixmap>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace morlaine {

/// The cached picture of all rectangles and labels. A large one is painted in turns with the event loop, so that it
/// keeps nothing waiting; meanwhile the former picture is there. Main thread only.
class TreemapPicture {
public:
    /// `scene` describes what to paint and may throw std::bad_alloc. `changed` is called by the event loop when a large
    /// picture is finished or memory has run out. The event loop gets its turn after `turn`.
    TreemapPicture(std::function<TreemapScene()> scene, std::function<void()> changed,
                   std::chrono::milliseconds turn = std::chrono::milliseconds(8));
    ~TreemapPicture();
    TreemapPicture(const TreemapPicture&) = delete;
    TreemapPicture& operator=(const TreemapPicture&) = delete;

    /// The scene has changed and has the layout `now`. A picture that is being painted is finished first, so that a
    /// slow machine shows something while a window is being resized, unless it shows another folder. An empty layout
    /// leaves no picture.
    void outdate(const TreemapLayout& now);

    /// Begins to paint what is outdated, or not painted for this number of pixels per point. A small picture is
    /// finished afterwards.
    void update(double devicePixelRatio);

    /// The last finished picture, possibly an outdated one of another size; null if there is none.
    [[nodiscard]] const QPixmap& pixmap() const { return m_pixmap; }

    [[nodiscard]] bool isUpToDate() const { return m_isUpToDate; }

    /// Whether the event loop will go on painting.
    [[nodiscard]] bool isBeingPainted() const { return m_painting != nullptr; }

    /// Whether memory did not suffice.
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

    /// The number of pictures that were finished.
    [[nodiscard]] int paintCount() const { return m_paintCount; }

private:
    void goOn();
    void finish(QImage image);
    void stop();

    const std::function<TreemapScene()> m_scene;
    const std::function<void()> m_changed;
    const std::chrono::milliseconds m_turn;
    QPixmap m_pixmap;
    bool m_isUpToDate = false;
    bool m_hasFailed = false;
    int m_paintCount = 0;

    std::shared_ptr<TreemapTiles> m_painting; // null if nothing is being painted
    bool m_isOutdated = false;                // what is being painted
    QTimer m_next;
};

} // namespace morlaine
