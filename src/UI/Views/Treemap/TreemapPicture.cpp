#include "UI/Views/Treemap/TreemapPicture.h"

#include "UI/Views/Treemap/TreemapLabels.h"

#include <new>
#include <optional>
#include <utility>

namespace morlaine {

namespace {

using Clock = std::chrono::steady_clock;

} // namespace

TreemapPicture::TreemapPicture(std::function<TreemapScene()> scene, std::function<void()> changed,
                               std::chrono::milliseconds turn)
    : m_scene(std::move(scene))
    , m_changed(std::move(changed))
    , m_turn(turn)
{
    m_next.setSingleShot(true);
    QObject::connect(&m_next, &QTimer::timeout, &m_next, [this] {
        goOn();
        if (m_painting == nullptr) {
            m_changed();
        }
    });
}

TreemapPicture::~TreemapPicture()
{
    stop();
}

void TreemapPicture::outdate(const TreemapLayout& now)
{
    m_isUpToDate = false;
    m_isOutdated = true;
    if (m_painting != nullptr && !m_painting->scene().layout->isOfSameFolder(now)) {
        stop();
    }
    if (now.empty()) {
        m_pixmap = {};
    }
}

void TreemapPicture::update(double devicePixelRatio)
{
    m_isUpToDate = m_isUpToDate && m_pixmap.devicePixelRatio() == devicePixelRatio;
    if (m_isUpToDate || m_painting != nullptr) {
        return;
    }
    m_hasFailed = false;
    m_isOutdated = false;
    try {
        m_painting = TreemapTiles::start(m_scene());
    } catch (const std::bad_alloc&) {
        m_hasFailed = true;
        return;
    }
    goOn();
}

/// Paints for a while, and asks the event loop for the next turn if there is more to do.
void TreemapPicture::goOn()
{
    const bool isSmall = m_painting->scene().layout->size() < TreemapTiles::worthAThread;
    const auto end = Clock::now() + m_turn;
    try {
        std::optional<QImage> image = m_painting->paint([=] { return !isSmall && Clock::now() >= end; });
        if (!image) {
            m_next.start();
            return;
        }
        finish(*std::move(image));
    } catch (const std::bad_alloc&) {
        m_hasFailed = true;
    }
    stop();
}

void TreemapPicture::finish(QImage image)
{
    TreemapLabels::paint(image, *m_painting->scene().layout);
    m_pixmap = QPixmap::fromImage(std::move(image));
    m_hasFailed = m_pixmap.isNull();
    m_isUpToDate = !m_hasFailed && !m_isOutdated;
    ++m_paintCount;
}

void TreemapPicture::stop()
{
    m_next.stop();
    if (m_painting != nullptr) {
        m_painting->abandon();
        m_painting.reset();
    }
}

} // namespace morlaine
