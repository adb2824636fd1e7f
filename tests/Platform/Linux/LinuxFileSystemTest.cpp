#include "Platform/FileSystem.h"
#include "Support/Mount.h"
#include "Support/Socket.h"
#include "Support/TemporaryFolder.h"
#include "Support/TreeText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <limits>
#include <map>
#include <string>
#include <string_view>

#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

/// Replaces the system's function: an item named "lying" claims the largest possible size.
// The system's header has reserved names. NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status) noexcept
{
    const auto result = ::syscall(SYS_statx, folder, path, flags, mask, status);
    if (result == 0 && std::string_view(path).ends_with("lying")) {
        status->stx_size = status->stx_blocks = std::numeric_limits<std::int64_t>::max();
    }
    return static_cast<int>(result);
}

namespace morlaine {
namespace {

namespace fs = std::filesystem;
using test::Mount;
using test::scan;
using test::TemporaryFolder;
using test::textOfTree;

std::map<std::string, FileNode> childrenByName(const FileNode& node)
{
    std::map<std::string, FileNode> children;
    for (const FileNode& child : node.childrenOrNone()) {
        children.emplace(child.url().lastPathComponent(), child);
    }
    return children;
}

/// Gives up the superuser's privileges during its lifetime.
class Unprivileged {
public:
    Unprivileged() : m_user(::geteuid()), m_group(::getegid())
    {
        if (m_user == 0 && (::setegid(65534) != 0 || ::seteuid(65534) != 0)) {
            throw std::runtime_error("privileges cannot be given up");
        }
    }
    ~Unprivileged()
    {
        if (::seteuid(m_user) != 0 || ::setegid(m_group) != 0) {
            std::abort();
        }
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

private:
    uid_t m_user;
    gid_t m_group;
};

TEST(LinuxFileSystem, AgreesWithAnIndependentListing)
{
    const TemporaryFolder folder;
    for (int i = 0; i < 2'000; ++i) {
        folder.makeFile("equally large file number " + std::to_string(i), 3);
    }
    std::vector<std::string> expected;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        expected.push_back(entry.path().filename());
    }
    std::vector<std::string> names;
    const FileNode root = scan(folder.url());
    for (const FileNode& child : root.childrenOrNone()) {
        names.emplace_back(child.name());
    }
    EXPECT_EQ(names, expected) << "in the order of the listing";
    EXPECT_EQ(root.size(), 6'000);
}

TEST(LinuxFileSystem, MeasuresEveryKindOfItem)
{
    const TemporaryFolder folder;
    folder.makeFile("plain.txt", 10'000);
    folder.makeSparseFile("sparse", 1'000'000'000);
    fs::create_hard_link(folder.path() / "plain.txt", folder.path() / "hard.txt");
    folder.makeLink("link", "plain.txt");
    folder.makeLink("linkToFolder", "sub");
    folder.makeLink("dangling", "nowhere");
    folder.makeLink("sub/loop", "../sub");
    ::mkfifo((folder.path() / "fifo").c_str(), 0600);
    const int socket = test::listeningSocket((folder.path() / "socket").native());
    ASSERT_GE(socket, 0);
    const FileNode root = scan(folder.url());
    ::close(socket);

    auto children = childrenByName(root);
    EXPECT_EQ(children.at("plain.txt").size(), 10'000);
    EXPECT_EQ(children.at("hard.txt").size(), 10'000) << "each of several hard links counts";
    EXPECT_LT(children.at("sparse").size(), 1'000'000);
    EXPECT_EQ(root.fileCount(), 9);
    EXPECT_EQ(textOfTree(children.at("sub")), "sub/\n  loop 0\n");
    for (const char* name : {"link", "linkToFolder", "dangling", "fifo", "socket"}) {
        EXPECT_EQ(textOfTree(children.at(name)), std::string(name) + " 0\n");
    }
    EXPECT_EQ(textOfTree(scan(FileUrl::fromPath("/dev/null"))), "null 0\n") << "a device is never opened";
}

TEST(LinuxFileSystem, BelievesNoFileThatIsLargerThanItsVolume)
{
    const TemporaryFolder folder;
    folder.makeFile("lying", 1);
    folder.makeFile("another lying", 1);
    folder.makeFile("lower/true", 1'000'000);
    folder.makeFolder("upper");
    folder.makeFolder("stacked");
    EXPECT_EQ(scan(folder.url()).size(), 1'000'000) << "which would overflow otherwise";

    const Mount small("tmpfs", folder.path() / "upper", "tmpfs", 0, "size=64k");
    fs::create_directories(folder.path() / "upper/files");
    fs::create_directories(folder.path() / "upper/work");
    const std::string path = folder.path().native();
    const std::string layers =
        "lowerdir=" + path + "/lower,upperdir=" + path + "/upper/files,workdir=" + path + "/upper/work";
    const Mount stacked("overlay", folder.path() / "stacked", "overlay", 0, layers.c_str());
    if (!stacked.isMounted()) {
        GTEST_SKIP() << "this user may not mount";
    }
    EXPECT_EQ(scan(folder.url("stacked")).size(), 1'000'000) << "a layer may be larger than the volume above it";
}

TEST(LinuxFileSystem, TakesEveryWayOfNamingTheTop)
{
    const TemporaryFolder folder;
    folder.makeFile("sub/a", 1);
    folder.makeFile("file.zip", 3);
    folder.makeLink("link", "sub");
    const std::string path = folder.path().native();
    const std::string sub = "sub/\n  a 1\n";
    const std::pair<std::string, std::string> cases[] = {
        {"/sub", sub},
        {"/sub/", sub},
        {"//sub///", sub},
        {"/sub/.", "./\n  a 1\n"},
        {"/sub/../sub", sub},
        {"/link/../sub", sub},
        {"/link", "link 0\n"},
        {"/link/", "link 0\n"},
        {"/file.zip", "file.zip 3 [archive]\n"},
        {"/missing", "missing 0\n"},
        {"/file.zip/x", "x 0\n"},
    };
    for (const auto& [name, tree] : cases) {
        EXPECT_EQ(textOfTree(scan(FileUrl::fromPath(path + name))), tree) << name;
    }
    for (std::size_t length = 4094; length <= 4098; ++length) {
        const std::string slashes(length - path.size() - 3, '/');
        EXPECT_EQ(textOfTree(scan(FileUrl::fromPath(path + slashes + "sub"))), sub)
            << "about the longest path that one call takes: " << length;
    }
    const FileNode through = scan(FileUrl::fromPath(path + "/link/.."));
    EXPECT_EQ(through.name(), "..");
    EXPECT_EQ(through.fileCount(), 3);
}

TEST(LinuxFileSystem, TellsAnUnreadableFolderFromAnEmptyOne)
{
    const TemporaryFolder folder;
    folder.makeFile("readable/a", 1);
    folder.makeFile("unlisted/a", 1);
    folder.makeFile("unsearchable/a", 1);
    folder.makeFile("secret", 7);
    fs::permissions(folder.path(), fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
    fs::permissions(folder.path() / "readable", fs::perms::all);
    fs::permissions(folder.path() / "unlisted", fs::perms::others_exec);
    fs::permissions(folder.path() / "unsearchable", fs::perms::owner_read | fs::perms::others_read);
    fs::permissions(folder.path() / "secret", fs::perms::none);
    const Unprivileged unprivileged;
    const auto children = childrenByName(scan(folder.url()));
    EXPECT_EQ(children.at("secret").size(), 7) << "measuring needs no permission to read";
    EXPECT_EQ(textOfTree(children.at("readable")), "readable/\n  a 1\n");
    EXPECT_EQ(textOfTree(children.at("unlisted")), "unlisted/\n");
    EXPECT_EQ(textOfTree(children.at("unsearchable")), "unsearchable/\n  a 0\n") << "listed but not to be measured";
}

TEST(LinuxFileSystem, TakesABundleForOneFile)
{
    const TemporaryFolder folder;
    folder.makeFile("Tool.app/Contents/Info.plist", 100);
    folder.makeFile("Tool.app/Contents/MacOS/tool", 20'000);
    folder.makeFile("Tool.app/Contents/.hidden", 999);
    folder.makeFile("Tool.app/.git/objects", 999);
    folder.makeLink("Tool.app/Contents/link", "Info.plist");
    folder.makeFile("Plain.app/tool", 5);
    folder.makeFile("Upper.PrefPane/Contents/Info.plist", 1);
    folder.makeFile("folder/Contents/Info.plist", 1);
    folder.makeFile("File.app", 6);
    folder.makeFile("Kernel.kext/Contents/Info.plist", 2);
    folder.makeLink("Link.app", "Tool.app");
    folder.makeLink("Elsewhere.app/Contents", "../Tool.app/Contents");
    const auto children = childrenByName(scan(folder.url()));
    for (const char* tree :
         {"Tool.app 20100 [application]\n", "Plain.app/\n  tool 5\n", "Upper.PrefPane 1 [application]\n",
          "File.app 6 [application]\n", "folder/\n  Contents/\n    Info.plist 1 [system]\n",
          "Kernel.kext 2 [application]\n", "Link.app 0\n", "Elsewhere.app/\n  Contents 0\n"}) {
        EXPECT_EQ(textOfTree(children.at(std::string(tree, std::strcspn(tree, "/ ")))), tree);
    }
    EXPECT_EQ(textOfTree(scan(folder.url("Tool.app/"))), "Tool.app 20100 [application]\n");
}

TEST(LinuxFileSystem, DoesNotEnterWhatIsMountedInTheTree)
{
    const TemporaryFolder folder;
    folder.makeFile("here/a", 1);
    folder.makeFile("there/b", 1);
    folder.makeFile("covered", 5);
    folder.makeFolder("tmp");
    folder.makeFolder("bound");
    const Mount other("tmpfs", folder.path() / "tmp", "tmpfs", 0);
    const Mount same((folder.path() / "there").c_str(), folder.path() / "bound", nullptr, MS_BIND);
    const Mount file((folder.path() / "there/b").c_str(), folder.path() / "covered", nullptr, MS_BIND);
    if (!other.isMounted() || !same.isMounted() || !file.isMounted()) {
        GTEST_SKIP() << "this user may not mount";
    }
    folder.makeFile("tmp/c", 1);
    EXPECT_EQ(scan(folder.url()).size(), 2);
    const auto children = childrenByName(scan(folder.url()));
    EXPECT_EQ(textOfTree(children.at("tmp")), "tmp/\n");
    EXPECT_EQ(textOfTree(children.at("bound")), "bound/\n") << "mounted from the same volume";
    EXPECT_EQ(textOfTree(children.at("covered")), "covered 0\n");
    EXPECT_TRUE(children.at("covered").children());
    EXPECT_EQ(textOfTree(scan(folder.url("tmp"))), "tmp/\n  c 1\n") << "the top may be a mount point";
    folder.makeLink("link", ".");
    EXPECT_EQ(textOfTree(scan(folder.url("link/tmp"))), "tmp/\n") << "but under its own name only";
}

} // namespace
} // namespace morlaine
