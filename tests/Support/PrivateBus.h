#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace morlaine::test {

/// A message bus of a test's own, ended with the object.
class PrivateBus {
public:
    /// Starts the bus and waits until it listens.
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    [[nodiscard]] bool isRunning() const { return !m_address.isEmpty(); }
    [[nodiscard]] QString address() const { return m_address; }

    /// A new connection each time.
    [[nodiscard]] QDBusConnection connect() const;

private:
    QProcess m_daemon;
    QString m_address;
};

} // namespace morlaine::test
