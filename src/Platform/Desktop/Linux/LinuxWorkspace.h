#pragma once

#include "Platform/Desktop/Linux/SessionBus.h"
#include "Platform/Workspace.h"

#include <optional>
#include <string_view>

namespace morlaine {

/// How a desktop opens its privacy settings: through the bus, or by a program if that fails or `service` is empty.
struct SettingsRoute {
    std::string_view desktop; // its name in XDG_CURRENT_DESKTOP
    std::string_view service; // the bus name that accepts the action "launch-panel"
    std::string_view program;
    std::string_view panel; // empty if the settings have no such panel
};

/// The route for the first known desktop in a list such as "ubuntu:GNOME".
[[nodiscard]] std::optional<SettingsRoute> privacySettingsRoute(std::string_view currentDesktop);

/// The services of a desktop that follows the common conventions: a file manager on the session bus, Qt's opener and
/// clipboard.
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
