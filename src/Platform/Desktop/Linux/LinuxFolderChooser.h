#pragma once

#include "Platform/Desktop/FolderChooser.h"
#include "Platform/Desktop/Linux/SessionBus.h"

#include <QObject>
#include <QPointer>

class QDialog;

namespace morlaine {

class PortalFolderChooser;

/// The dialog of the desktop's portal; where no portal offers one, a dialog of our own.
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

    void lookForPortal(const Request& request);
    void openPortalDialog(const Request& request, const QString& portal);
    [[nodiscard]] PortalFolderChooser& makePortalDialog(const Request& request, const QDBusConnection& bus,
                                                        const QString& portal);
    void openOwnDialog(const Request& request);
    void open(QDialog& dialog);

    /// Whether somebody still waits for the dialog.
    [[nodiscard]] static bool isWanted(const Request& request);

    QObject m_context;          // of everything that may call back
    QPointer<QDialog> m_dialog; // the window's child
    bool m_isLookingForPortal = false;
    SessionBus m_bus;
};

} // namespace morlaine
