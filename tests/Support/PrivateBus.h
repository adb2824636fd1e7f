#pragma once

#include "Support/TemporaryFolder.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>

#include <functional>
#include <vector>

namespace morlaine::test {

/// A message bus that has only the test's own services. Its connections end with it. Main thread only, except `connect`
/// and `address`.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

    [[nodiscard]] bool isRunning() const { return !m_address.isEmpty(); }
    [[nodiscard]] QString address() const { return m_address; }

    /// A new connection each time.
    [[nodiscard]] QDBusConnection connect() const;

private:
    TemporaryFolder m_folder;
    QProcess m_daemon;
    QString m_address;
};

/// A service on a bus whose objects all answer through one function. A call is recorded before it is answered. Leaves
/// the bus when it is destroyed.
class FakeService final : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// The reply to a call. Without createReply or createErrorReply no reply is sent.
    using Answer = std::function<QDBusMessage(const QDBusMessage& call)>;

    FakeService(const PrivateBus& bus, const QString& name, Answer answer);
    ~FakeService() override;

    /// The calls of that member so far, in order.
    [[nodiscard]] std::vector<QDBusMessage> calls(const QString& member) const;

    [[nodiscard]] QDBusConnection connection() const { return m_connection; }

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    QDBusConnection m_connection;
    Answer m_answer;
    std::vector<QDBusMessage> m_calls;
};

} // namespace morlaine::test
