#include "Support/PrivateBus.h"

#include <QUuid>

namespace morlaine::test {

PrivateBus::PrivateBus()
{
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
    while (m_daemon.state() != QProcess::NotRunning && !m_daemon.canReadLine()) {
        m_daemon.waitForReadyRead();
    }
    m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
}

PrivateBus::~PrivateBus()
{
    m_daemon.kill();
    m_daemon.waitForFinished();
}

QDBusConnection PrivateBus::connect() const
{
    return QDBusConnection::connectToBus(m_address, QUuid::createUuid().toString());
}

} // namespace morlaine::test
