#include "UI/Views/Window/Announcer.h"

#include <QAccessibleWidget>

#include <chrono>

namespace morlaine {

namespace {

constexpr std::chrono::seconds shownFor{6};

QAccessibleInterface* makeNotification(const QString& /*className*/, QObject* object)
{
    auto* const announcer = qobject_cast<Announcer*>(object);
    return announcer != nullptr ? new QAccessibleWidget(announcer, QAccessible::Notification) : nullptr;
}

} // namespace

Announcer::Announcer(QWidget* parent) : QWidget(parent)
{
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(makeNotification), true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(0, 0, 1, 1); // painted by nobody
    hide();
    m_timer.setSingleShot(true);
    m_timer.setInterval(shownFor);
    connect(&m_timer, &QTimer::timeout, this, &QWidget::hide);
}

/// Only what appears is spoken.
void Announcer::announce(const QString& text)
{
    hide();
    setAccessibleName(text);
    show();
    m_timer.start();
}

} // namespace morlaine
