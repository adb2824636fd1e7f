#pragma once

#include "Platform/MainThreadQueue.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>

namespace morlaine {

/// Uses the session bus without blocking the window: connecting to a slow or dead bus may take long. Main thread only.
/// Callbacks run from the event loop, and not after this object is destroyed.
class SessionBus {
public:
    using Connect = std::function<QDBusConnection()>; // called on a background thread

    explicit SessionBus(Connect connect);

    /// The bus of the current session.
    [[nodiscard]] static QDBusConnection ofSession() { return QDBusConnection::sessionBus(); }

    /// Calls `use` with the connection; it is not connected if there is no bus.
    void connect(std::function<void(const QDBusConnection&)> use);

    /// Sends a call, then calls `onReply` with the reply or the error.
    void call(const QDBusMessage& message, std::function<void(const QDBusMessage& reply)> onReply);

private:
    Connect m_connect;
    QObject m_watchers;
    MainThreadQueue m_queue;
};

} // namespace morlaine
