#include "Platform/Desktop/Linux/LinuxFolderChooser.h"

#include "Platform/Desktop/Linux/PortalFolderChooser.h"

#include <QDBusVariant>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QTimer>

#include <chrono>
#include <utility>

namespace morlaine {

namespace {

constexpr uint firstVersionWithFolders = 3;
constexpr std::chrono::seconds patienceWithPortal(2);

/// Closes a dialog along with its window.
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

/// Knows folders from files by what the system tells. The toolkit's provider looks into files to tell their kinds.
class PlainIcons final : public QFileIconProvider {
public:
    using QFileIconProvider::icon;
    [[nodiscard]] QIcon icon(const QFileInfo& info) const override { return icon(info.isDir() ? Folder : File); }
    [[nodiscard]] QString type(const QFileInfo& /*info*/) const override { return {}; }

    /// Outlives every dialog.
    [[nodiscard]] static PlainIcons& shared()
    {
        static PlainIcons icons;
        return icons;
    }
};

/// The toolkit builds a dialog of its own from the start, and nothing at all where it asks the desktop for one.
bool isOfDesktop(const QFileDialog& dialog)
{
    return dialog.findChild<QDialogButtonBox*>() == nullptr;
}

std::optional<FileUrl> folderOf(const QFileDialog& dialog)
{
    const QList<QUrl> urls = dialog.selectedUrls();
    return urls.empty() ? std::nullopt : FileUrl::parse(urls.front().toEncoded(QUrl::FullyEncoded).toStdString());
}

QDBusMessage portalVersion()
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << QStringLiteral("org.freedesktop.portal.FileChooser") << QStringLiteral("version");
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

LinuxFolderChooser::LinuxFolderChooser(SessionBus::Connect connect) : m_bus(std::move(connect))
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
        return;
    }
    const Request request{&window, texts, std::move(onChosen)};
    QFileDialog& dialog = makeToolkitDialog(request);
    m_dialog = &dialog;
    if (isOfDesktop(dialog)) {
        open(dialog);
    } else {
        lookForPortal(request);
    }
}

QFileDialog& LinuxFolderChooser::makeToolkitDialog(const Request& request)
{
    auto* dialog = new QFileDialog(request.window);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setIconProvider(&PlainIcons::shared());
    dialog->setSupportedSchemes({QStringLiteral("file")});
    dialog->setLabelText(QFileDialog::Accept, QString::fromStdString(request.texts.prompt));
    if (request.texts.title) {
        dialog->setWindowTitle(QString::fromStdString(*request.texts.title));
    }
    QObject::connect(dialog, &QDialog::accepted, &m_context, [dialog, onChosen = request.onChosen] {
        if (const std::optional<FileUrl> folder = folderOf(*dialog)) {
            onChosen(folder->asFolder());
        }
    });
    return *dialog;
}

void LinuxFolderChooser::lookForPortal(const Request& request)
{
    const auto isDecided = std::make_shared<bool>(false);
    const auto isFirst = [isDecided] { return !std::exchange(*isDecided, true); };
    QTimer::singleShot(patienceWithPortal, &m_context, [this, request, isFirst] {
        if (isFirst() && isWanted(request)) {
            open(*m_dialog);
        }
    });
    m_bus.call(portalVersion(), [this, request, isFirst](const QDBusMessage& reply) {
        if (!isFirst() || !isWanted(request)) {
            return;
        }
        if (choosesFolders(reply)) {
            openPortalDialog(request, reply.service());
        } else {
            open(*m_dialog);
        }
    });
}

void LinuxFolderChooser::openPortalDialog(const Request& request, const QString& portal)
{
    m_bus.connect([this, request, portal](const QDBusConnection& bus) {
        if (!isWanted(request)) {
            return;
        }
        delete m_dialog;
        PortalFolderChooser& dialog = makePortalDialog(request, bus, portal);
        m_dialog = &dialog;
        open(dialog);
    });
}

PortalFolderChooser& LinuxFolderChooser::makePortalDialog(const Request& request, const QDBusConnection& bus,
                                                          const QString& portal)
{
    auto* dialog = new PortalFolderChooser(bus, portal, request.texts, *request.window);
    QObject::connect(dialog, &QDialog::accepted, &m_context, [dialog, onChosen = request.onChosen] {
        if (dialog->folder()) {
            onChosen(dialog->folder()->asFolder());
        }
    });
    QObject::connect(dialog, &PortalFolderChooser::failed, &m_context, [this, request] {
        if (isWanted(request)) {
            QFileDialog& substitute = makeToolkitDialog(request);
            m_dialog = &substitute;
            open(substitute);
        }
    });
    return *dialog;
}

void LinuxFolderChooser::open(QDialog& dialog)
{
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
    if (request.window && request.window->isVisible()) {
        return true;
    }
    delete m_dialog;
    return false;
}

} // namespace morlaine
