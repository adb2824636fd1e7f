#include "UI/Views/Treemap/TreemapPainter.h"

#include "UI/Styles/Contrast.h"
#include "UI/Styles/Conversions.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"
#include "UI/Views/Treemap/RectangleFiller.h"
#include "UI/Views/Treemap/TreemapDecisions.h"
#include "Utilities/ShownText.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <cstdint>
#include <vector>

namespace morlaine::TreemapPainter {

namespace {

namespace Decide = TreemapDecisions;

/// A font with what placing text in it takes, looked up once for all labels.
class LabelStyle {
public:
    LabelStyle(int size, QFont::Weight weight, double opacity)
        : m_font(TextStyles::drawingFont(size, weight))
        , m_metrics(m_font)
        , m_color(Theme::withOpacity(Qt::white, opacity))
    {
    }

    void paint(QPainter& painter, const QPointF& topLeft, const QString& text, double width) const
    {
        painter.setFont(m_font);
        painter.setPen(m_color);
        painter.drawText(topLeft + QPointF(0, m_metrics.ascent()), m_metrics.elidedText(text, Qt::ElideRight, width));
    }

private:
    QFont m_font;
    QFontMetricsF m_metrics;
    QColor m_color;
};

void paintRects(QImage& image, const Scene& scene, const std::vector<std::uint32_t>& order)
{
    RectangleFiller filler(image, scene.devicePixelRatio);
    for (const std::uint32_t position : order) {
        const TreemapRect& item = scene.rects[position];
        if (item.node.isDirectory()) {
            const auto [opacity, width] = Decide::folderOutline(item.depth);
            filler.stroke(item.rect, Qt::white, opacity, width);
        } else {
            filler.fill(item.rect, toQColor(item.color), Decide::fileFillOpacity(scene.highlightIDs, item.node));
            filler.stroke(item.rect, Qt::black, Decide::fileOutline.opacity, Decide::fileOutline.width);
        }
    }
}

/// After all rectangles: none is painted over the labels of another.
void paintLabels(QImage& image, const Scene& scene)
{
    const LabelStyle nameStyle(10, QFont::Medium, Decide::nameOpacity);
    const LabelStyle sizeStyle(9, QFont::Normal, Decide::sizeOpacity);
    QPainter painter(&image);
    painter.setLayoutDirection(Qt::LeftToRight); // as elsewhere in the window, also for a name that begins otherwise
    for (const TreemapRect& item : scene.rects) {
        const std::optional<Decide::Labels> labels = Decide::labelsIn(item.rect);
        if (labels && !item.node.isDirectory()) {
            painter.setClipRect(labels->frame);
            nameStyle.paint(painter, labels->name, shownText(item.node.name()), labels->frame.width());
            sizeStyle.paint(painter, labels->size, QString::fromStdString(item.node.formattedSize()),
                            labels->frame.width());
        }
    }
}

void paintMark(QPainter& painter, const Rect& rect, const QColor& color, double fillOpacity,
               const Decide::Outline& outline)
{
    QPen pen(Theme::withOpacity(color, outline.opacity), outline.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(10);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(toQRectF(rect), Theme::withOpacity(color, fillOpacity));
    painter.setPen(pen);
    painter.drawRect(toQRectF(rect));
    painter.restore();
}

} // namespace

QPixmap paintBase(const Scene& scene)
{
    const QSizeF pixels = QSizeF(scene.size) * scene.devicePixelRatio;
    QImage image(static_cast<int>(std::ceil(pixels.width())), static_cast<int>(std::ceil(pixels.height())),
                 QImage::Format_RGB32);
    image.fill(scene.ground);
    paintRects(image, scene, Decide::paintingOrder(scene.rects));
    image.setDevicePixelRatio(scene.devicePixelRatio);
    paintLabels(image, scene);
    return QPixmap::fromImage(std::move(image));
}

void paintSelection(QPainter& painter, const Rect& rect, const QColor& accent)
{
    paintMark(painter, rect, accent, Decide::selectionFillOpacity, Decide::selectionOutline);
}

void paintHover(QPainter& painter, const Rect& rect)
{
    paintMark(painter, rect, Qt::white, Decide::hoverFillOpacity, Decide::hoverOutline);
}

QRect reachOfMark(const Rect& rect)
{
    const int beyond = static_cast<int>(std::ceil(Decide::selectionOutline.width / 2)) + 1;
    return toQRectF(rect).toAlignedRect().adjusted(-beyond, -beyond, beyond, beyond);
}

QColor ground(const QPalette& palette)
{
    constexpr QColor dark(24, 26, 30);
    return mixed(palette.color(QPalette::Window), dark, 0.14);
}

} // namespace morlaine::TreemapPainter
