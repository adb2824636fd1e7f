#pragma once

#include "Platform/Desktop/ApplicationService.h"
#include "Platform/Desktop/Linux/SessionBus.h"

#include <QDBusVirtualObject>

namespace morlaine {

/// Serves the interface `org.freedesktop.Application` at the object `/com/morlaine/Morlaine` of the bus name
/// `com.morlaine.Morlaine`.
class LinuxApplicationService final : public ApplicationService {
public:
    LinuxApplicationService(Handlers handlers, SessionBus::Connect connect);

private:
    class Object final : public QDBusVirtualObject {
    public:
        explicit Object(Handlers handlers) : m_handlers(std::move(handlers)) {}
        [[nodiscard]] QString introspect(const QString& path) const override;
        bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    private:
        Handlers m_handlers;
    };

    void serve(const QDBusConnection& connection);

    Object m_object;
    SessionBus m_bus;
};

} // namespace morlaine
