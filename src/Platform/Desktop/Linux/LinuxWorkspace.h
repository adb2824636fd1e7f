#pragma once

#include "Platform/Desktop/Linux/SessionBus.h"
#include "Platform/Workspace.h"

#include <optional>
#include <string_view>

namespace morlaine {

/// How a desktop's settings are opened where they are about privacy: through the bus, and when that fails or `service`
/// is empty, by a program.
struct SettingsRoute {
    std::string_view desktop; // as XDG_CURRENT_DESKTOP names it
    std::string_view service; // takes the desktop's action "launch-panel"
    std::string_view program;
    std::string_view panel; // empty where the settings have none for this
};

/// The route for the first desktop in a list such as "ubuntu:GNOME" that is known.
[[nodiscard]] std::optional<SettingsRoute> privacySettingsRoute(std::string_view currentDesktop);

/// The services of a desktop that keeps to the common conventions: a file manager on the session bus, Qt's
/// opener and clipboard.
class LinuxWorkspace final : public Workspace {
public:
    explicit LinuxWorkspace(SessionBus::Connect connect);

    void selectFile(const std::string& path, const std::string& rootPath) override;
    void open(const FileUrl& url) override;
    void copyText(std::string_view text) override;
    void openPrivacySettings() override;

private:
    SessionBus m_bus;
};

} // namespace morlaine
