#include "Support/PrivateBus.h"

#include "Support/Wait.h"

#include <atomic>

namespace morlaine::test {

PrivateBus::PrivateBus()
{
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=" MORLAINE_BUS_CONFIGURATION),
                    QStringLiteral("--address=unix:path=%1/bus").arg(QString::fromStdString(m_folder.path())),
                    QStringLiteral("--print-address"), QStringLiteral("--nofork")});
    while (m_daemon.state() != QProcess::NotRunning && !m_daemon.canReadLine() &&
           m_daemon.waitForReadyRead(longEnoughInMilliseconds)) {
    }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus()
{
    m_daemon.kill();
    m_daemon.waitForFinished(longEnoughInMilliseconds);
}

QDBusConnection PrivateBus::connect() const
{
    static std::atomic<int> count = 0;
    return QDBusConnection::connectToBus(m_address, QStringLiteral("private-%1").arg(count++));
}

FakeService::FakeService(const PrivateBus& bus, const QString& name, Answer answer)
    : m_connection(bus.connect())
    , m_answer(std::move(answer))
{
    m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    m_connection.registerService(name);
}

FakeService::~FakeService()
{
    const QString name = m_connection.name();
    m_connection.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    QDBusConnection::disconnectFromBus(name);
}

std::vector<QDBusMessage> FakeService::calls(const QString& member) const
{
    std::vector<QDBusMessage> calls;
    for (const QDBusMessage& call : m_calls) {
        if (call.member() == member) {
            calls.push_back(call);
        }
    }
    return calls;
}

QString FakeService::introspect(const QString&) const
{
    return {};
}

bool FakeService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    m_calls.push_back(message);
    const QDBusMessage reply = m_answer(message);
    return reply.type() == QDBusMessage::InvalidMessage || connection.send(reply);
}

} // namespace morlaine::test
