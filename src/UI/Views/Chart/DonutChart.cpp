#include "UI/Views/Chart/DonutChart.h"

#include "UI/Styles/Conversions.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"
#include "UI/Views/Chart/DonutSliceShape.h"
#include "Utilities/ByteCount.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int fullSide = 130;
constexpr int leastSide = 64;
constexpr double fullThickness = 24;
constexpr double smallestText = 7; // points

DonutSliceShape shapeOf(const PieSlice& slice, double thickness)
{
    return {slice.startAngle, slice.endAngle, thickness};
}

QString totalCaption()
{
    return QStringLiteral("Total Size");
}

QString totalText(const QString& total)
{
    return totalCaption() + QStringLiteral(": ") + total;
}

/// `font`, reduced until `text` fits `width`.
QFont fitted(QFont font, const QString& text, double width)
{
    while (QFontMetricsF(font).horizontalAdvance(text) > width && font.pointSizeF() > smallestText) {
        font.setPointSizeF(std::max(font.pointSizeF() - 0.5, smallestText));
    }
    return font;
}

} // namespace

DonutChart::DonutChart(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setMinimumSize(leastSide, leastSide);
    setMaximumSize(fullSide, fullSide);
}

QSize DonutChart::sizeHint() const
{
    return {fullSide, fullSide};
}

void DonutChart::setSlices(std::vector<PieSlice> slices, std::int64_t total)
{
    m_slices = std::move(slices);
    m_total = QString::fromStdString(byteCountText(total));
    m_tipSlice = nullptr;

    QString figures = totalText(m_total);
    for (const PieSlice& slice : m_slices) {
        figures += QStringLiteral("; ") + sliceText(slice) + QStringLiteral(", ") + percentageText(slice.size, total);
    }
    setAccessibleDescription(figures);
    update();
}

const PieSlice* DonutChart::sliceAt(const QPointF& position) const
{
    const auto found = std::ranges::find_if(
        m_slices, [&](const PieSlice& slice) { return shapeOf(slice, thickness()).path(circle()).contains(position); });
    return found == m_slices.end() ? nullptr : &*found;
}

QRectF DonutChart::circle() const
{
    const double side = std::min(width(), height());
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(rect()).center());
    return square;
}

double DonutChart::thickness() const
{
    return fullThickness * circle().width() / fullSide;
}

bool DonutChart::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        showTip(static_cast<QHelpEvent*>(event)->pos());
        return true;
    }
    return QWidget::event(event);
}

void DonutChart::mouseMoveEvent(QMouseEvent* event)
{
    // A visible tooltip follows the pointer to another slice.
    if (QToolTip::isVisible() && sliceAt(event->position()) != m_tipSlice) {
        showTip(event->pos());
    }
}

void DonutChart::showTip(const QPoint& position)
{
    m_tipSlice = sliceAt(position);
    QString tip = m_tipSlice == nullptr ? QString() : sliceText(*m_tipSlice);
    if (m_tipSlice == nullptr && isTotalCut()) {
        tip = totalText(m_total);
    }
    QToolTip::showText(mapToGlobal(position), tip, this);
}

void DonutChart::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const PieSlice& slice : m_slices) {
        painter.fillPath(shapeOf(slice, thickness()).path(circle()), toQColor(slice.category.color()));
    }
    paintTotal(painter);
}

/// The width of both lines in the hole: the side of the square inscribed in it.
double DonutChart::roomForTotal() const
{
    return (circle().width() - 2 * thickness()) * 0.86;
}

QFont DonutChart::captionFont() const
{
    return fitted(TextStyles::font(TextStyle::caption2), totalCaption(), roomForTotal());
}

QFont DonutChart::totalFont() const
{
    return fitted(TextStyles::font(TextStyle::body, QFont::Bold), m_total, roomForTotal());
}

bool DonutChart::isTotalCut() const
{
    return QFontMetricsF(captionFont()).horizontalAdvance(totalCaption()) > roomForTotal() ||
           QFontMetricsF(totalFont()).horizontalAdvance(m_total) > roomForTotal();
}

void DonutChart::paintTotal(QPainter& painter) const
{
    const double side = roomForTotal();
    const QFont captionFont = this->captionFont();
    const QFont totalFont = this->totalFont();
    const double captionHeight = QFontMetricsF(captionFont).height();
    const double totalHeight = QFontMetricsF(totalFont).height();
    QRectF line(0, 0, side, captionHeight);
    line.moveCenter(circle().center() - QPointF(0, totalHeight / 2));

    constexpr int flags = Qt::AlignCenter | Qt::TextSingleLine;
    painter.setFont(captionFont);
    painter.setPen(Theme::textSecondary(palette()));
    painter.setLayoutDirection(Qt::LeftToRight); // for the numbers
    painter.drawText(line, flags, QFontMetricsF(captionFont).elidedText(totalCaption(), Qt::ElideRight, side));
    painter.setFont(totalFont);
    painter.setPen(Theme::textPrimary(palette()));
    painter.drawText(QRectF(line.left(), line.bottom(), side, totalHeight), flags,
                     QFontMetricsF(totalFont).elidedText(m_total, Qt::ElideRight, side));
}

} // namespace morlaine
