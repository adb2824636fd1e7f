#include "UI/Views/Window/Notification.h"

#include "UI/Widgets/InstallAccessible.h"

#include <QAccessibleWidget>

#include <chrono>

namespace morlaine {

namespace {

constexpr std::chrono::seconds shownFor{6};

class Announced final : public QAccessibleWidget {
public:
    explicit Announced(Notification& widget) : QAccessibleWidget(&widget, QAccessible::Notification) {}
};

} // namespace

Notification::Notification(QWidget* parent) : QWidget(parent)
{
    installAccessible<Announced, Notification>();
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(0, 0, 1, 1);
    hide();
    m_timer.setSingleShot(true);
    m_timer.setInterval(shownFor);
    connect(&m_timer, &QTimer::timeout, this, &QWidget::hide);
}

/// Hides first: only a notification that appears is announced.
void Notification::announce(const QString& text)
{
    hide();
    setAccessibleName(text);
    show();
    m_timer.start();
}

} // namespace morlaine
