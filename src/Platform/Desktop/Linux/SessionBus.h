#pragma once

#include "Platform/MainThreadQueue.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>

namespace morlaine {

/// The way to the desktop's session bus that keeps no window waiting: a bus that is slow, or is none, may take long to
/// find out about. Main thread only; what is handed over here runs from its event loop and not after this object is
/// gone.
class SessionBus {
public:
    using Connect = std::function<QDBusConnection()>; // called on another thread

    explicit SessionBus(Connect connect);

    /// The bus of the running session.
    [[nodiscard]] static QDBusConnection ofSession() { return QDBusConnection::sessionBus(); }

    /// Hands the connection to `use`; one that is not connected when there is no bus.
    void connect(std::function<void(const QDBusConnection&)> use);

    /// Sends the call and hands its reply, or the error that came instead, to `onReply`.
    void call(const QDBusMessage& message, std::function<void(const QDBusMessage& reply)> onReply);

private:
    Connect m_connect;
    QObject m_watchers;
    MainThreadQueue m_queue;
};

} // namespace morlaine
