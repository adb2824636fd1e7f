#include "Support/FakeSettingsPortal.h"

#include <QDBusError>
#include <QDBusMessage>

namespace morlaine::test {

namespace {

const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

} // namespace

FakeSettingsPortal::FakeSettingsPortal(const QDBusConnection& bus, Version version, uint scheme)
    : m_bus(bus)
    , m_version(version)
    , m_scheme(scheme)
{
    m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
    m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

void FakeSettingsPortal::change(const QString& group, const QString& key, const QVariant& value)
{
    QDBusMessage signal = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Settings"),
                                                     QStringLiteral("SettingChanged"));
    signal << group << key << QVariant::fromValue(QDBusVariant(value));
    m_bus.send(signal);
}

void FakeSettingsPortal::changeScheme(uint scheme)
{
    m_scheme = scheme;
    change(appearance, colorScheme, scheme);
}

QDBusVariant FakeSettingsPortal::ReadOne(const QString& group, const QString& key)
{
    ++m_questions;
    if (m_version == Version::silent) {
        setDelayedReply(true);
    } else if (m_version == Version::withoutReadOne) {
        sendErrorReply(QDBusError::UnknownMethod);
    } else if (m_version == Version::withoutTheKey || group != appearance || key != colorScheme) {
        sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), QStringLiteral("No such setting"));
    }
    return QDBusVariant(m_scheme);
}

QDBusVariant FakeSettingsPortal::Read(const QString& group, const QString& key)
{
    if (group != appearance || key != colorScheme) {
        sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), QStringLiteral("No such setting"));
    }
    return QDBusVariant(QVariant::fromValue(QDBusVariant(m_scheme)));
}

} // namespace morlaine::test
