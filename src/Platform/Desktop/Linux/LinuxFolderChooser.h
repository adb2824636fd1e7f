#pragma once

#include "Platform/Desktop/FolderChooser.h"
#include "Platform/Desktop/Linux/SessionBus.h"

#include <QObject>
#include <QPointer>

class QDialog;
class QFileDialog;

namespace morlaine {

class PortalFolderChooser;

/// The dialog of the desktop that the toolkit adapts to; where it adapts to none, that of the portal; and where there
/// is no portal either, the toolkit's own.
class LinuxFolderChooser final : public FolderChooser {
public:
    explicit LinuxFolderChooser(SessionBus::Connect connect);
    ~LinuxFolderChooser() override;
    LinuxFolderChooser(const LinuxFolderChooser&) = delete;
    LinuxFolderChooser& operator=(const LinuxFolderChooser&) = delete;

    void choose(QWidget& window, const Texts& texts, std::function<void(const FileUrl&)> onChosen) override;

private:
    struct Request {
        QPointer<QWidget> window;
        Texts texts;
        std::function<void(const FileUrl&)> onChosen;
    };

    [[nodiscard]] QFileDialog& makeToolkitDialog(const Request& request);
    [[nodiscard]] PortalFolderChooser& makePortalDialog(const Request& request, const QDBusConnection& bus,
                                                        const QString& portal);
    void lookForPortal(const Request& request);
    void openPortalDialog(const Request& request, const QString& portal);
    void open(QDialog& dialog);

    /// Whether somebody still waits for the dialog; what was prepared is thrown away if not.
    [[nodiscard]] bool isWanted(const Request& request);

    QObject m_context;          // of everything that may call back
    QPointer<QDialog> m_dialog; // the window's child
    SessionBus m_bus;
};

} // namespace morlaine
