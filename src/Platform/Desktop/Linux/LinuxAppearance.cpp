#include "Platform/Desktop/Linux/LinuxAppearance.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QTimer>

#include <utility>

namespace morlaine {

namespace {

const QString group = QStringLiteral("org.freedesktop.appearance");
const QString key = QStringLiteral("color-scheme");

} // namespace

SettingsPortal::SettingsPortal(const QDBusConnection& bus)
    : QDBusAbstractInterface(QStringLiteral("org.freedesktop.portal.Desktop"),
                             QStringLiteral("/org/freedesktop/portal/desktop"), "org.freedesktop.portal.Settings", bus,
                             nullptr)
{
}

std::unique_ptr<Appearance> Appearance::native()
{
    return std::make_unique<LinuxAppearance>(SessionBus::ofSession);
}

LinuxAppearance::LinuxAppearance(SessionBus::Connect connect) : m_bus(std::move(connect))
{
    m_bus.connect([this](const QDBusConnection& bus) { follow(bus); });
}

void LinuxAppearance::follow(const QDBusConnection& bus)
{
    if (!bus.isConnected()) {
        answer(Preference::none);
        return;
    }
    qRegisterMetaType<QDBusVariant>(); // required to connect to a signal with this parameter
    m_portal = std::make_unique<SettingsPortal>(bus);
    connect(m_portal.get(), &SettingsPortal::SettingChanged, this, &LinuxAppearance::settingChanged);
    ask(QStringLiteral("ReadOne"), [this](const QDBusMessage& reply) {
        if (QDBusError(reply).type() == QDBusError::UnknownMethod) {
            askInTheOldWay();
        } else {
            answer(preferenceIn(reply.arguments().value(0)));
        }
    });
}

void LinuxAppearance::askInTheOldWay()
{
    ask(QStringLiteral("Read"),
        [this](const QDBusMessage& reply) { answer(preferenceIn(reply.arguments().value(0))); });
}

void LinuxAppearance::ask(const QString& method, const std::function<void(const QDBusMessage& reply)>& then)
{
    auto* watcher = new QDBusPendingCallWatcher(m_portal->asyncCall(method, group, key), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, then](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        if (!m_isAnswered) {
            then(finished->reply());
        }
    });
}

LinuxAppearance::Preference LinuxAppearance::preferenceIn(const QVariant& value)
{
    QVariant inner = value;
    while (inner.metaType() == QMetaType::fromType<QDBusVariant>()) {
        inner = inner.value<QDBusVariant>().variant();
    }
    if (inner.metaType() != QMetaType::fromType<uint>()) {
        return Preference::none;
    }
    switch (inner.toUInt()) {
    case 1:
        return Preference::dark;
    case 2:
        return Preference::light;
    default:
        return Preference::none;
    }
}

void LinuxAppearance::settingChanged(const QString& changedGroup, const QString& changedKey, const QDBusVariant& value)
{
    if (changedGroup == group && changedKey == key) {
        answer(preferenceIn(value.variant()));
    }
}

void LinuxAppearance::answer(Preference preference)
{
    const bool isChanged = preference != m_preference;
    m_isAnswered = true;
    m_preference = preference;
    Q_EMIT answered();
    if (isChanged && m_observer) {
        m_observer(preference);
    }
}

void LinuxAppearance::waitForAnswer(std::chrono::milliseconds patience)
{
    if (m_isAnswered) {
        return;
    }
    QEventLoop loop;
    connect(this, &LinuxAppearance::answered, &loop, &QEventLoop::quit);
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

} // namespace morlaine
