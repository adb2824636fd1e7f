#include "Platform/StandardFolders.h"

#include "Platform/Linux/UserDirectories.h"

#include <QByteArray>

#include <fstream>
#include <iterator>

#include <pwd.h>
#include <unistd.h>

namespace morlaine {

namespace {

std::string homeFolder()
{
    if (const QByteArray home = qgetenv("HOME"); home.startsWith('/')) {
        return home.toStdString();
    }
    const passwd* user = ::getpwuid(::getuid());
    return user != nullptr && user->pw_dir != nullptr && *user->pw_dir == '/' ? user->pw_dir : "/";
}

/// The value of the variable; `usual` if it is unset or a relative path.
std::string baseFolder(const char* variable, const std::string& usual)
{
    const QByteArray folder = qgetenv(variable);
    return folder.startsWith('/') ? folder.toStdString() : usual;
}

std::string contentOfFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

std::vector<FileUrl> applicationSupportFolders()
{
    return {FileUrl::fromPath(baseFolder("XDG_DATA_HOME", homeFolder() + "/.local/share"))};
}

// QStandardPaths returns these as text, which breaks names that are not UTF-8. It also returns the home folder for a
// folder that the user has disabled.
UserFolders UserFolders::current()
{
    const std::string home = homeFolder();
    const std::string configuration =
        contentOfFile(baseFolder("XDG_CONFIG_HOME", home + "/.config") + "/user-dirs.dirs");
    const auto folder = [&](std::string_view key, std::string_view usualName) {
        const std::optional<std::string> path = userDirectory(configuration, key, usualName, home);
        return path ? std::optional(FileUrl::fromPath(*path)) : std::nullopt;
    };
    return {
        .home = FileUrl::fromPath(home),
        .documents = folder("XDG_DOCUMENTS_DIR", "Documents"),
        .downloads = folder("XDG_DOWNLOAD_DIR", "Downloads"),
        .desktop = folder("XDG_DESKTOP_DIR", "Desktop"),
    };
}

} // namespace morlaine
