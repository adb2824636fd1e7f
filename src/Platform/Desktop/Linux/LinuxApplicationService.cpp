#include "Platform/Desktop/Linux/LinuxApplicationService.h"

#include <QDBusArgument>
#include <QVariantMap>

#include <optional>
#include <utility>

namespace morlaine {

namespace {

const QString busName = QStringLiteral("com.morlaine.Morlaine");
const QString objectPath = QStringLiteral("/com/morlaine/Morlaine");
const QString interfaceName = QStringLiteral("org.freedesktop.Application");

/// Skips urls that do not name files.
std::vector<FileUrl> fileUrls(const QStringList& texts)
{
    std::vector<FileUrl> urls;
    for (const QString& text : texts) {
        if (const std::optional<FileUrl> url = FileUrl::parse(text.toStdString())) {
            urls.push_back(*url);
        }
    }
    return urls;
}

/// A Wayland compositor raises a window only for a token, which the caller got with the user's click.
void takeActivationToken(const QVariant& platformData)
{
    const QByteArray token =
        qdbus_cast<QVariantMap>(platformData).value(QStringLiteral("activation-token")).toString().toUtf8();
    if (!token.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", token);
    }
}

} // namespace

QString LinuxApplicationService::Object::introspect(const QString& /*path*/) const
{
    return QStringLiteral(R"(<interface name="org.freedesktop.Application">
  <method name="Activate"><arg type="a{sv}" name="platform_data" direction="in"/></method>
  <method name="Open">
    <arg type="as" name="uris" direction="in"/><arg type="a{sv}" name="platform_data" direction="in"/>
  </method>
  <method name="ActivateAction">
    <arg type="s" name="action_name" direction="in"/><arg type="av" name="parameter" direction="in"/>
    <arg type="a{sv}" name="platform_data" direction="in"/>
  </method>
</interface>
)");
}

bool LinuxApplicationService::Object::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const bool isAddressed = message.interface() == interfaceName || message.interface().isEmpty();
    const std::pair<QString, QString> call(message.member(), message.signature());
    if (isAddressed && call == std::pair(QStringLiteral("Activate"), QStringLiteral("a{sv}"))) {
        takeActivationToken(message.arguments().at(0));
        m_handlers.activate();
    } else if (isAddressed && call == std::pair(QStringLiteral("Open"), QStringLiteral("asa{sv}"))) {
        takeActivationToken(message.arguments().at(1));
        m_handlers.open(fileUrls(message.arguments().at(0).toStringList()));
    } else {
        return false; // there are no actions
    }
    connection.send(message.createReply());
    return true;
}

LinuxApplicationService::LinuxApplicationService(Handlers handlers, SessionBus::Connect connect)
    : m_object(std::move(handlers))
    , m_bus(std::move(connect))
{
    m_bus.connect([this](const QDBusConnection& connection) { serve(connection); });
}

/// Registers the object before the name: a caller that starts the program through the bus calls it at once.
void LinuxApplicationService::serve(const QDBusConnection& connection)
{
    QDBusConnection bus = connection;
    if (!bus.isConnected() || !bus.registerVirtualObject(objectPath, &m_object)) {
        return;
    }
    constexpr uint doNotQueue = 4;
    QDBusMessage request =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    request << busName << doNotQueue;
    bus.send(request);
}

std::unique_ptr<ApplicationService> ApplicationService::native(Handlers handlers)
{
    return std::make_unique<LinuxApplicationService>(std::move(handlers), &SessionBus::ofSession);
}

} // namespace morlaine
