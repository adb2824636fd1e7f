#include "UI/Views/Treemap/TreemapLabels.h"

#include "Core/Treemap/TreemapLayout.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"
#include "UI/Views/Treemap/TreemapDecisions.h"
#include "Utilities/ShownText.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <new>
#include <vector>

namespace morlaine::TreemapLabels {

namespace {

namespace Decide = TreemapDecisions;

/// A font with its metrics, looked up once for all labels.
class LabelStyle {
public:
    LabelStyle(int size, QFont::Weight weight, double opacity)
        : m_font(TextStyles::drawingFont(size, weight))
        , m_metrics(m_font)
        , m_color(Theme::withOpacity(Qt::white, opacity))
    {
    }

    [[nodiscard]] QString fitted(const QString& text, double width) const
    {
        return m_metrics.elidedText(text, Qt::ElideRight, width);
    }

    [[nodiscard]] QRectF place(const QPointF& topLeft, const QString& text) const
    {
        return {topLeft, QSizeF(m_metrics.horizontalAdvance(text), m_metrics.height())};
    }

    void paint(QPainter& painter, const QPointF& topLeft, const QString& text) const
    {
        painter.setFont(m_font);
        painter.setPen(m_color);
        painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight); // at the same place
        painter.drawText(topLeft + QPointF(0, m_metrics.ascent()), text);
    }

private:
    QFont m_font;
    QFontMetricsF m_metrics;
    QColor m_color;
};

/// Sums each value with its neighbours up to `reach` steps before and behind it.
void spread(const std::vector<int>& from, std::vector<int>& to, int reach, int step)
{
    const int size = static_cast<int>(from.size());
    std::ranges::fill(to, 0);
    for (int offset = -reach * step; offset <= reach * step; offset += step) {
        for (int index = std::max(-offset, 0); index < size - std::max(offset, 0); ++index) {
            to[static_cast<std::size_t>(index)] += from[static_cast<std::size_t>(index + offset)];
        }
    }
}

/// Turns the opacity mask of a text into its shadow, which extends `reach` pixels further. The text must not be that
/// close to the left and right edge.
void soften(QImage& mask, int reach)
{
    constexpr int strength = 3;  // relative to evenly spread text
    constexpr int darkest = 140; // of 255
    const int width = mask.width();
    std::vector<int> values;
    for (int y = 0; y < mask.height(); ++y) {
        values.insert(values.end(), mask.constScanLine(y), mask.constScanLine(y) + width);
    }
    std::vector<int> sums(values.size());
    spread(values, sums, reach, 1);
    spread(sums, values, reach, width);
    const int share = (2 * reach + 1) * (2 * reach + 1);
    for (int y = 0; y < mask.height(); ++y) {
        const auto row = values.begin() + static_cast<std::ptrdiff_t>(y) * width;
        std::transform(row, row + width, mask.scanLine(y), [share, darkest](int sum) {
            return static_cast<uchar>(std::min<int>(strength * sum / share, darkest));
        });
    }
}

class LabelPainter {
public:
    explicit LabelPainter(QImage& image) : m_scale(image.devicePixelRatio()), m_painter(&image) {}

    void paint(const Decide::Labels& labels, const QString& fullName, const QString& fullSize)
    {
        const QString name = m_nameStyle.fitted(fullName, labels.frame.width());
        const QString size = m_sizeStyle.fitted(fullSize, labels.frame.width());
        const auto paintTexts = [&](QPainter& painter) {
            m_nameStyle.paint(painter, labels.name, name);
            m_sizeStyle.paint(painter, labels.size, size);
        };
        paintShadow(m_nameStyle.place(labels.name, name) | m_sizeStyle.place(labels.size, size), labels.frame,
                    paintTexts);
        m_painter.setClipRect(labels.frame);
        paintTexts(m_painter);
    }

private:
    template <typename PaintTexts>
    void paintShadow(const QRectF& texts, const QRectF& frame, PaintTexts paintTexts)
    {
        constexpr double width = 1; // points
        const QRectF area = texts.adjusted(-2, -2, 2, 2) & frame.adjusted(-width, -width, width, width);
        // Whole pixels, so that letters and shadow are rounded alike.
        const QRect pixels = QRectF(area.topLeft() * m_scale, area.size() * m_scale).toAlignedRect();
        QImage mask(pixels.size(), QImage::Format_Alpha8);
        if (mask.isNull()) {
            throw std::bad_alloc();
        }
        mask.fill(Qt::transparent);
        QPainter painter(&mask);
        painter.translate(-pixels.topLeft());
        painter.scale(m_scale, m_scale);
        painter.setClipRect(frame);
        paintTexts(painter);
        painter.end();
        soften(mask, std::max(static_cast<int>(std::floor(width * m_scale)), 1));
        mask.setDevicePixelRatio(m_scale);
        m_painter.setClipping(false);
        m_painter.drawImage(QPointF(pixels.topLeft()) / m_scale, mask);
    }

    const LabelStyle m_nameStyle{10, QFont::Medium, Decide::nameOpacity};
    const LabelStyle m_sizeStyle{9, QFont::Normal, Decide::sizeOpacity};
    const double m_scale;
    QPainter m_painter;
};

} // namespace

void paint(QImage& image, const TreemapLayout& layout)
{
    LabelPainter painter(image);
    for (std::size_t block = 0; block < layout.blocks().size(); ++block) {
        const TreemapLayout::Bounds& bounds = layout.blocks()[block];
        if (!Decide::labelsIn({bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top})) {
            continue;
        }
        for (const TreemapLayout::Item& item : layout.itemsOfBlock(block)) {
            const std::optional<Decide::Labels> labels = Decide::labelsIn(item.rect);
            if (labels && !item.isFolder()) {
                const FileNode node = FileNode::at(layout.tree(), item.node);
                painter.paint(*labels, shownText(node.name()), QString::fromStdString(node.formattedSize()));
            }
        }
    }
}

} // namespace morlaine::TreemapLabels
