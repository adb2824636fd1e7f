#include "Platform/Desktop/Linux/LinuxFolderChooser.h"

#include "Platform/Desktop/Linux/FolderDialog.h"
#include "Platform/Desktop/Linux/PortalFolderChooser.h"
#include "Platform/StandardFolders.h"

#include <QDBusVariant>
#include <QDialog>
#include <QEvent>
#include <QTimer>

#include <utility>

namespace morlaine {

namespace {

constexpr uint firstVersionWithFolders = 3;

/// Closes a dialog when its window is closed.
class WindowWatcher final : public QObject {
public:
    explicit WindowWatcher(QDialog& dialog) : QObject(&dialog), m_dialog(dialog)
    {
        dialog.parentWidget()->window()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Hide && !event->spontaneous()) {
            m_dialog.reject();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QDialog& m_dialog;
};

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");

QDBusMessage portalVersion()
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(portalName, QStringLiteral("/org/freedesktop/portal/desktop"),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << QStringLiteral("org.freedesktop.portal.FileChooser") << QStringLiteral("version");
    return message;
}

/// Queries the unique bus name of the portal, from which its signals come.
QDBusMessage portalOwner()
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage message = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                                          QStringLiteral("GetNameOwner"));
    message << portalName;
    return message;
}

bool choosesFolders(const QDBusMessage& versionReply)
{
    return versionReply.type() == QDBusMessage::ReplyMessage &&
           versionReply.arguments().value(0).value<QDBusVariant>().variant().toUInt() >= firstVersionWithFolders;
}

} // namespace

std::unique_ptr<FolderChooser> FolderChooser::native()
{
    return std::make_unique<LinuxFolderChooser>(SessionBus::ofSession);
}

LinuxFolderChooser::LinuxFolderChooser(SessionBus::Connect connect, std::chrono::milliseconds patience)
    : m_patience(patience)
    , m_bus(std::move(connect))
{
}

LinuxFolderChooser::~LinuxFolderChooser()
{
    delete m_dialog;
}

void LinuxFolderChooser::choose(QWidget& window, const Texts& texts, std::function<void(const FileUrl&)> onChosen)
{
    if (m_dialog) {
        m_dialog->raise();
        m_dialog->activateWindow();
    } else if (!m_isLookingForPortal) {
        lookForPortal({&window, texts, std::move(onChosen)});
    }
}

void LinuxFolderChooser::lookForPortal(const Request& request)
{
    m_isLookingForPortal = true;
    const auto isDecided = std::make_shared<bool>(false);
    const auto decide = [this, request, isDecided](const QString& portal) {
        if (std::exchange(*isDecided, true)) {
            return;
        }
        m_isLookingForPortal = false;
        if (portal.isEmpty()) {
            openOwnDialog(request);
        } else {
            openPortalDialog(request, portal);
        }
    };
    QTimer::singleShot(m_patience, &m_context, [decide] { decide({}); });
    m_bus.call(portalVersion(), [this, decide](const QDBusMessage& reply) {
        if (!choosesFolders(reply)) {
            decide({});
            return;
        }
        m_bus.call(portalOwner(), [decide](const QDBusMessage& owner) {
            decide(owner.type() == QDBusMessage::ReplyMessage ? owner.arguments().value(0).toString() : QString());
        });
    });
}

void LinuxFolderChooser::openOwnDialog(const Request& request)
{
    if (!isWanted(request)) {
        return;
    }
    auto* dialog = new FolderDialog(request.texts, UserFolders::current(), *request.window);
    QObject::connect(dialog, &QDialog::accepted, &m_context,
                     [dialog, onChosen = request.onChosen] { onChosen(FileUrl::fromPath(dialog->folder().path())); });
    open(*dialog);
}

void LinuxFolderChooser::openPortalDialog(const Request& request, const QString& portal)
{
    m_isLookingForPortal = true; // until a connection is available
    m_bus.connect([this, request, portal](const QDBusConnection& bus) {
        m_isLookingForPortal = false;
        if (isWanted(request)) {
            open(makePortalDialog(request, bus, portal));
        }
    });
}

PortalFolderChooser& LinuxFolderChooser::makePortalDialog(const Request& request, const QDBusConnection& bus,
                                                          const QString& portal)
{
    auto* dialog = new PortalFolderChooser(bus, portal, request.texts, *request.window);
    QObject::connect(dialog, &QDialog::accepted, &m_context, [dialog, onChosen = request.onChosen] {
        if (dialog->folder()) {
            onChosen(FileUrl::fromPath(dialog->folder()->path()));
        }
    });
    QObject::connect(dialog, &PortalFolderChooser::failed, &m_context, [this, request] { openOwnDialog(request); });
    return *dialog;
}

void LinuxFolderChooser::open(QDialog& dialog)
{
    m_dialog = &dialog;
    new WindowWatcher(dialog);
    QObject::connect(&dialog, &QDialog::finished, &m_context, [this, &dialog] {
        if (m_dialog == &dialog) {
            m_dialog = nullptr;
        }
        dialog.deleteLater();
    });
    dialog.open();
}

bool LinuxFolderChooser::isWanted(const Request& request)
{
    return request.window && request.window->isVisible();
}

} // namespace morlaine
