#include "UI/Views/Window/MessageBanner.h"

#include "UI/Widgets/ElidingLabel.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace morlaine {

namespace {

constexpr std::chrono::seconds shownFor{6};
constexpr int mostLines = 3;
constexpr int widest = 480;

/// Screen readers announce a notification when it appears.
QAccessibleInterface* makeNotification(const QString& /*className*/, QObject* object)
{
    auto* const banner = qobject_cast<MessageBanner*>(object);
    return banner != nullptr ? new QAccessibleWidget(banner, QAccessible::Notification) : nullptr;
}

} // namespace

MessageBanner::MessageBanner(QWidget* parent)
    : QWidget(parent)
    , m_label(new ElidingLabel(TextStyle::body, Theme::textPrimary, mostLines))
{
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(makeNotification), true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    m_label->setAlignment(Qt::AlignCenter);
    auto* column = new QVBoxLayout(this);
    constexpr int vertical = static_cast<int>(Theme::paddingSmall);
    constexpr int horizontal = static_cast<int>(Theme::paddingMedium);
    column->setContentsMargins(horizontal, vertical, horizontal, vertical);
    column->addWidget(m_label);
    m_timer.setSingleShot(true);
    m_timer.setInterval(shownFor);
    connect(&m_timer, &QTimer::timeout, this, &QWidget::hide);
    parent->installEventFilter(this);
}

/// Hides first: only a notification that appears is announced.
void MessageBanner::showMessage(const QString& message)
{
    hide();
    m_label->setText(message);
    setAccessibleName(message);
    place();
    raise();
    show();
    m_timer.start();
}

bool MessageBanner::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize) {
        place();
    }
    return QWidget::eventFilter(watched, event);
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
