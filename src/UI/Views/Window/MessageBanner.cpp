#include "UI/Views/Window/MessageBanner.h"

#include "UI/Widgets/ElidingLabel.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int mostLines = 3;
constexpr int widest = 480;

} // namespace

MessageBanner::MessageBanner(QWidget* parent)
    : Notification(parent)
    , m_label(new ElidingLabel(TextStyle::body, Theme::textPrimary, mostLines))
{
    m_label->setAlignment(Qt::AlignCenter);
    auto* column = new QVBoxLayout(this);
    constexpr int vertical = static_cast<int>(Theme::paddingSmall);
    constexpr int horizontal = static_cast<int>(Theme::paddingMedium);
    column->setContentsMargins(horizontal, vertical, horizontal, vertical);
    column->addWidget(m_label);
    parent->installEventFilter(this);
}

void MessageBanner::showMessage(const QString& message)
{
    m_label->setText(message);
    place();
    raise();
    announce(message);
}

bool MessageBanner::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize) {
        place();
    }
    return Notification::eventFilter(watched, event);
}

void MessageBanner::place()
{
    constexpr int margin = static_cast<int>(Theme::paddingLarge);
    const int width = std::min({sizeHint().width(), widest, parentWidget()->width() - 2 * margin});
    QRect area(QPoint(), QSize(width, layout()->heightForWidth(width)));
    area.moveCenter(parentWidget()->rect().center());
    area.moveBottom(parentWidget()->rect().bottom() - margin);
    setGeometry(area);
}

void MessageBanner::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Theme::separator(palette()));
    painter.setBrush(Theme::panelBackground(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::cornerRadiusMedium,
                            Theme::cornerRadiusMedium);
}

} // namespace morlaine
