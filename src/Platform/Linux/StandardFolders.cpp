#include "Platform/StandardFolders.h"

#include "Platform/Linux/UserDirectories.h"

#include <QFile>
#include <QStandardPaths>

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

std::string configurationFolder(const std::string& home)
{
    const QByteArray folder = qgetenv("XDG_CONFIG_HOME");
    return folder.startsWith('/') ? folder.toStdString() : home + "/.config";
}

std::string contentOfFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

std::vector<FileUrl> applicationSupportFolders()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (folder.isEmpty()) {
        return {};
    }
    return {FileUrl::fromPath(QFile::encodeName(folder).toStdString())};
}

// The toolkit knows these folders too, but as text, in which a name that is no UTF-8 is lost; and it takes a folder
// that the user does not want for the home folder.
UserFolders UserFolders::current()
{
    const std::string home = homeFolder();
    const std::string configuration = contentOfFile(configurationFolder(home) + "/user-dirs.dirs");
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
