#include "Platform/Desktop/Linux/SessionBus.h"

#include "Platform/Background.h"

#include <QDBusPendingCallWatcher>

#include <system_error>

namespace morlaine {

SessionBus::SessionBus(Connect connect) : m_connect(std::move(connect))
{
}

void SessionBus::connect(std::function<void(const QDBusConnection&)> use)
{
    const std::error_code failure = Background::start(
        "session bus", Background::Priority::userInitiated, [connect = m_connect, poster = m_queue.poster(), use] {
            poster.post([use, connection = connect()] { use(connection); });
        });
    if (failure) {
        m_queue.post([use = std::move(use)] { use(QDBusConnection(QString())); });
    }
}

void SessionBus::call(const QDBusMessage& message, std::function<void(const QDBusMessage& reply)> onReply)
{
    connect([this, message, onReply = std::move(onReply)](const QDBusConnection& connection) {
        if (!connection.isConnected()) {
            onReply(message.createErrorReply(QDBusError::Disconnected, QString()));
            return;
        }
        auto* watcher = new QDBusPendingCallWatcher(connection.asyncCall(message), &m_watchers);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                         [onReply](QDBusPendingCallWatcher* call) {
                             call->deleteLater();
                             onReply(call->reply());
                         });
    });
}

} // namespace morlaine
