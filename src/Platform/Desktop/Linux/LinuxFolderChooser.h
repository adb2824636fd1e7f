#pragma once

#include "Platform/Desktop/FolderChooser.h"
#include "Platform/Desktop/Linux/SessionBus.h"

#include <QObject>
#include <QPointer>

#include <chrono>

class QDialog;

namespace morlaine {

class PortalFolderChooser;

/// Shows the dialog of the desktop's portal, or our own dialog if the portal has none.
class LinuxFolderChooser final : public FolderChooser {
public:
    /// A portal that does not answer for the time of `patience` counts as missing.
    explicit LinuxFolderChooser(SessionBus::Connect connect,
                                std::chrono::milliseconds patience = std::chrono::seconds(2));
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

    /// Whether the window still exists and is visible.
    [[nodiscard]] static bool isWanted(const Request& request);

    std::chrono::milliseconds m_patience;
    QObject m_context;          // of all callbacks, which end with it
    QPointer<QDialog> m_dialog; // child of the window
    bool m_isLookingForPortal = false;
    SessionBus m_bus;
};

} // namespace morlaine
