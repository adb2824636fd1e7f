#include "UI/Widgets/ProgressIndicator.h"

#include "UI/Styles/Theme.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int tick = 33;        // milliseconds
constexpr qint64 turn = 1'400;  // milliseconds
constexpr double sweep = 100;   // degrees covered by the moving part
constexpr double thinness = 10; // ratio of diameter to line width

} // namespace

ProgressIndicator::ProgressIndicator(Size size, const QString& accessibleName, QWidget* parent)
    : QProgressBar(parent)
    , m_size(size)
{
    setRange(0, 0);
    setTextVisible(false);
    setAccessibleName(accessibleName);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_clock.start();
}

QSize ProgressIndicator::sizeHint() const
{
    return m_size == Size::small ? QSize(16, 16) : QSize(32, 32);
}

void ProgressIndicator::showEvent(QShowEvent* event)
{
    QProgressBar::showEvent(event);
    m_timer.start(tick, this);
}

void ProgressIndicator::hideEvent(QHideEvent* event)
{
    QProgressBar::hideEvent(event);
    m_timer.stop();
}

void ProgressIndicator::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId()) {
        update();
    } else {
        QProgressBar::timerEvent(event);
    }
}

void ProgressIndicator::paintEvent(QPaintEvent* /*event*/)
{
    const double side = std::min(width(), height());
    const double stroke = std::max(side / thinness, 2.0);
    QRectF circle(0, 0, side - stroke, side - stroke);
    circle.moveCenter(QRectF(rect()).center());

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = Theme::textSecondary(palette());
    painter.setPen(QPen(Theme::withOpacity(color, 0.2), stroke));
    painter.drawEllipse(circle);

    // QPainter counts sixteenths of a degree, counterclockwise.
    const double turned = 360.0 * static_cast<double>(m_clock.elapsed() % turn) / static_cast<double>(turn);
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, qRound((90 - turned) * 16), qRound(-sweep * 16));
}

} // namespace morlaine
