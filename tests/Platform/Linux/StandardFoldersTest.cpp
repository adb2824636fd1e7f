#include "Platform/StandardFolders.h"

#include "Support/Environment.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <tuple>

#include <pwd.h>
#include <unistd.h>

namespace morlaine {
namespace {

using test::Environment;
using test::TemporaryFolder;

std::string pathOf(const std::optional<FileUrl>& url)
{
    return url ? url->path() : "none";
}

struct Case {
    const char* description;
    std::string configuration;
    std::string documents;
    std::string downloads;
    std::string desktop;
};

const Case cases[] = {
    {"nothing configured", "", "/home/ann/Documents", "/home/ann/Downloads", "/home/ann/Desktop"},
    {"translated and moved",
     "# comment\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n  XDG_DOWNLOAD_DIR = \"/data/in/\"\n"
     "XDG_DOCUMENTS_DIR=\"$HOME/Meine Dokumente\"",
     "/home/ann/Meine Dokumente", "/data/in", "/home/ann/Schreibtisch"},
    {"the home folder means none",
     "XDG_DESKTOP_DIR=\"$HOME\"\nXDG_DOWNLOAD_DIR=\"$HOME//\"\nXDG_DOCUMENTS_DIR=\"/home/ann\"\n", "none", "none",
     "none"},
    {"escapes and bytes that are not UTF-8",
     "XDG_DESKTOP_DIR=\"$HOME/a\\\"b\\\\c\\$d\"\nXDG_DOWNLOAD_DIR=\"$HOME/T\xE9l\xE9\"\n", "/home/ann/Documents",
     "/home/ann/T\xE9l\xE9", "/home/ann/a\"b\\c$d"},
    {"the last line counts, those that mean nothing do not",
     "XDG_DESKTOP_DIR=\"$HOME/Old\"\nXDG_DESKTOP_DIR=\"$HOME/New\"\nXDG_DESKTOP_DIR=\"relative\"\n"
     "XDG_DESKTOP_DIR=\"$HOMELESS/x\"\n#XDG_DOWNLOAD_DIR=\"$HOME/No\"\nXDG_DOCUMENTS_DIR=$HOME/Unquoted\n",
     "/home/ann/Documents", "/home/ann/Downloads", "/home/ann/New"},
};

TEST(StandardFoldersTest, AreWhereTheUserHasThem)
{
    const Environment home("HOME", "/home/ann");
    for (const Case& each : cases) {
        SCOPED_TRACE(each.description);
        const TemporaryFolder configuration;
        std::ofstream(configuration.path() / "user-dirs.dirs", std::ios::binary) << each.configuration;
        const Environment configurationHome("XDG_CONFIG_HOME", configuration.path());

        const UserFolders folders = UserFolders::current();
        EXPECT_EQ(folders.home.path(), "/home/ann");
        EXPECT_EQ(pathOf(folders.documents), each.documents);
        EXPECT_EQ(pathOf(folders.downloads), each.downloads);
        EXPECT_EQ(pathOf(folders.desktop), each.desktop);
    }
}

TEST(StandardFoldersTest, AreConfiguredInTheHomeFolderUnlessElsewhere)
{
    const TemporaryFolder folder;
    folder.makeFolder("T\xE9l\xE9/.config");
    const std::string home = folder.path() / "T\xE9l\xE9";
    std::ofstream(home + "/.config/user-dirs.dirs") << "XDG_DESKTOP_DIR=\"$HOME/Bureau\"\n";
    const Environment homeVariable("HOME", home);
    const Environment configurationHome("XDG_CONFIG_HOME", std::nullopt);

    EXPECT_EQ(pathOf(UserFolders::current().desktop), home + "/Bureau");
}

TEST(StandardFoldersTest, KeepsDataWhereTheVariablesOrThePasswordDatabaseSay)
{
    const std::string inDatabase = ::getpwuid(::getuid())->pw_dir;
    const std::tuple<std::optional<std::string>, std::optional<std::string>, std::string> dataCases[] = {
        {"/d\xE9", "/home/ann", "/d\xE9"},
        {"relative", "/home/ann", "/home/ann/.local/share"},
        {"", "/home/ann", "/home/ann/.local/share"},
        {std::nullopt, std::nullopt, inDatabase + "/.local/share"},
    };
    for (const auto& [data, home, expected] : dataCases) {
        const Environment dataVariable("XDG_DATA_HOME", data);
        const Environment homeVariable("HOME", home);
        EXPECT_EQ(applicationSupportFolders().front().path(), expected);
    }
}

} // namespace
} // namespace morlaine
