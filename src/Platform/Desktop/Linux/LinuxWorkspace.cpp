#include "Platform/Desktop/Linux/LinuxWorkspace.h"

#include <QClipboard>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <array>

namespace morlaine {

/// The parameter of the action "launch-panel": a panel and its arguments.
struct SettingsPanel {
    QString name;
    QVariantList arguments;

    friend QDBusArgument& operator<<(QDBusArgument& argument, const SettingsPanel& panel)
    {
        argument.beginStructure();
        argument << panel.name << panel.arguments;
        argument.endStructure();
        return argument;
    }

    friend const QDBusArgument& operator>>(const QDBusArgument& argument, SettingsPanel& panel)
    {
        argument.beginStructure();
        argument >> panel.name >> panel.arguments;
        argument.endStructure();
        return argument;
    }
};

} // namespace morlaine

Q_DECLARE_METATYPE(morlaine::SettingsPanel)

namespace morlaine {

namespace {

constexpr std::array<SettingsRoute, 8> settingsRoutes = {{
    {"GNOME", "org.gnome.Settings", "gnome-control-center", "privacy"},
    {"Unity", "", "unity-control-center", "privacy"},
    {"Budgie", "", "budgie-control-center", "privacy"},
    {"X-Cinnamon", "", "cinnamon-settings", "privacy"},
    {"KDE", "", "systemsettings", ""},
    {"XFCE", "", "xfce4-settings-manager", ""},
    {"MATE", "", "mate-control-center", ""},
    {"LXQt", "", "lxqt-config", ""},
}};

QString textOf(std::string_view ascii)
{
    return QString::fromLatin1(ascii.data(), static_cast<qsizetype>(ascii.size()));
}

QDBusMessage showItems(const FileUrl& item)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    // The second argument is an activation token, which Qt does not give to programs.
    message << QStringList(QString::fromStdString(item.absoluteString())) << QString();
    return message;
}

QDBusMessage launchPanel(const SettingsRoute& route)
{
    qDBusRegisterMetaType<SettingsPanel>();
    const QString service = textOf(route.service);
    QString path = service;
    path.replace(u'.', u'/').prepend(u'/');
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, QStringLiteral("org.freedesktop.Application"),
                                                          QStringLiteral("ActivateAction"));
    const QDBusVariant panel(QVariant::fromValue(SettingsPanel{textOf(route.panel), {}}));
    message << QStringLiteral("launch-panel") << QVariantList{QVariant::fromValue(panel)} << QVariantMap();
    return message;
}

void startProgram(const SettingsRoute& route)
{
    const QString program = QStandardPaths::findExecutable(textOf(route.program));
    if (program.isEmpty()) {
        return;
    }
    QProcess process;
    process.setProgram(program);
    process.setArguments(route.panel.empty() ? QStringList() : QStringList(textOf(route.panel)));
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.startDetached();
}

std::string enclosingFolder(const std::string& path)
{
    const std::size_t slash = FileUrl::fromPath(path).path().rfind('/');
    return path.substr(0, std::max<std::size_t>(slash, 1));
}

} // namespace

std::optional<SettingsRoute> privacySettingsRoute(std::string_view currentDesktop)
{
    while (!currentDesktop.empty()) {
        const std::size_t end = std::min(currentDesktop.find(':'), currentDesktop.size());
        for (const SettingsRoute& route : settingsRoutes) {
            if (route.desktop == currentDesktop.substr(0, end)) {
                return route;
            }
        }
        currentDesktop.remove_prefix(std::min(end + 1, currentDesktop.size()));
    }
    return std::nullopt;
}

std::shared_ptr<Workspace> Workspace::native()
{
    return std::make_shared<LinuxWorkspace>(SessionBus::ofSession);
}

LinuxWorkspace::LinuxWorkspace(SessionBus::Connect connect) : m_bus(std::move(connect))
{
}

void LinuxWorkspace::selectFile(const std::string& path, const std::string& rootPath)
{
    const FileUrl folder = FileUrl::fromPath(rootPath.empty() ? enclosingFolder(path) : rootPath);
    m_bus.call(showItems(FileUrl::fromPath(path)), [this, folder](const QDBusMessage& reply) {
        if (reply.type() != QDBusMessage::ReplyMessage) {
            open(folder);
        }
    });
}

void LinuxWorkspace::open(const FileUrl& url)
{
    QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(url.absoluteString()), QUrl::StrictMode));
}

void LinuxWorkspace::copyText(std::string_view text)
{
    auto data = std::make_unique<QMimeData>();
    data->setData(QStringLiteral("text/plain"), QByteArray(text.data(), static_cast<qsizetype>(text.size())));
    QGuiApplication::clipboard()->setMimeData(data.release()); // the clipboard takes ownership
}

void LinuxWorkspace::openPrivacySettings()
{
    const QByteArray desktop = qgetenv("XDG_CURRENT_DESKTOP");
    const std::optional<SettingsRoute> route = privacySettingsRoute(desktop.toStdString());
    if (!route) {
        return;
    }
    if (route->service.empty()) {
        startProgram(*route);
        return;
    }
    m_bus.call(launchPanel(*route), [route = *route](const QDBusMessage& reply) {
        if (reply.type() != QDBusMessage::ReplyMessage) {
            startProgram(route);
        }
    });
}

} // namespace morlaine
