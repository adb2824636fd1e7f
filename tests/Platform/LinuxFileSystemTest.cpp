#include "Core/Scanner/DiskWalk.h"
#include "Platform/FileSystem.h"
#include "Support/TemporaryFolder.h"
#include "Support/TreeText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <stop_token>
#include <string>
#include <thread>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

namespace morlaine {
namespace {

namespace fs = std::filesystem;
using test::TemporaryFolder;
using test::textOfTree;

FileNode scan(const FileUrl& url)
{
    DiskWalk walk(FileSystem::native(), {}, [](const auto&...) {});
    return walk.scan(url);
}

std::map<std::string, FileNode> childrenByName(const FileNode& node)
{
    std::map<std::string, FileNode> children;
    for (const FileNode& child : node.childrenOrNone()) {
        children.emplace(child.url().lastPathComponent(), child);
    }
    return children;
}

std::optional<FolderContents> list(Folder& folder)
{
    FolderContents contents;
    return folder.list(contents, {}) ? std::optional(std::move(contents)) : std::nullopt;
}

/// Gives up the privileges that let the superuser read everything, for as long as it lives.
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

/// Something mounted over a folder or file, where this user may mount.
class Mount {
public:
    Mount(const char* source, fs::path target, const char* type, unsigned long flags) : m_target(std::move(target))
    {
        m_isMounted = ::mount(source, m_target.c_str(), type, flags, nullptr) == 0;
    }
    ~Mount()
    {
        if (m_isMounted) {
            ::umount2(m_target.c_str(), MNT_DETACH);
        }
    }
    Mount(const Mount&) = delete;
    Mount& operator=(const Mount&) = delete;
    [[nodiscard]] bool isMounted() const { return m_isMounted; }

private:
    fs::path m_target;
    bool m_isMounted = false;
};

/// The sum that the tree must have, by calls of another library.
std::int64_t expectedSize(const fs::path& folder)
{
    std::int64_t sum = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        struct stat status = {};
        if (::lstat(entry.path().c_str(), &status) == 0 && !S_ISDIR(status.st_mode) && !S_ISLNK(status.st_mode)) {
            sum += std::min<std::int64_t>(status.st_size, status.st_blocks * 512);
        }
    }
    return sum;
}

TEST(LinuxFileSystem, AgreesWithAnIndependentCount)
{
    const TemporaryFolder folder;
    for (int i = 0; i < 300; ++i) {
        folder.makeFile("f" + std::to_string(i % 7) + "/g" + std::to_string(i % 3) + "/" + std::to_string(i) + ".txt",
                        static_cast<std::size_t>(i * i));
    }
    folder.makeSparseFile("f1/sparse", 50'000'000'000);
    folder.makeFolder("empty");
    const FileNode root = scan(folder.url());
    EXPECT_EQ(root.size(), expectedSize(folder.path()));
    EXPECT_EQ(root.fileCount(), 301);
    EXPECT_EQ(root.directoryCount(), 1 + 7 + 21 + 1);
}

TEST(LinuxFileSystem, KeepsTheOrderOfTheListing)
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
    EXPECT_EQ(names, expected);
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
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {AF_UNIX, {}};
    (folder.path() / "socket").native().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
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

TEST(LinuxFileSystem, TakesEveryWayOfNamingTheTop)
{
    const TemporaryFolder folder;
    folder.makeFile("sub/a", 1);
    folder.makeFile("file.zip", 3);
    folder.makeLink("link", "sub");
    const std::string path = folder.path().native();
    const std::string sub = "sub/\n  a 1\n";
    struct Case {
        std::string path;
        std::string tree;
    };
    const Case cases[] = {
        {path + "/sub", sub},
        {path + "/sub/", sub},
        {path + "//sub///", sub},
        {path + "/sub/.", "./\n  a 1\n"},
        {path + "/sub/../sub", sub},
        {path + "/link/../sub", sub},
        {path + "/link", "link 0\n"},
        {path + "/link/", "link 0\n"},
        {path + "/file.zip", "file.zip 3 [archive]\n"},
        {path + "/missing", "missing 0\n"},
        {path + "/file.zip/x", "x 0\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(textOfTree(scan(FileUrl::fromPath(c.path))), c.tree) << c.path;
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

TEST(LinuxFileSystem, KeepsNamesOfAnyBytes)
{
    const TemporaryFolder folder;
    const std::string longest(255, 'n');
    const std::vector<std::string> names = {"caf\xE9.txt", "new\nline", " ",  "\xF0\x9F\x98\x80", "\x01\x7F", longest,
                                            "-rf",         "100%",      "..."};
    for (const std::string& name : names) {
        folder.makeFile(name + "/" + name, 1);
    }
    const auto children = childrenByName(scan(folder.url()));
    for (const std::string& name : names) {
        ASSERT_TRUE(children.contains(name)) << name;
        ASSERT_EQ(children.at(name).childrenOrNone().size(), 1U) << name;
        EXPECT_EQ(children.at(name).children()->front().url().path(), (folder.path() / name / name).native());
        EXPECT_TRUE(fs::exists(children.at(name).children()->front().url().path())) << name;
    }
    EXPECT_EQ(children.at("caf\xE9.txt").name(), "caf\uFFFD.txt");
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

TEST(LinuxFileSystem, StopsInTheMiddleOfAListing)
{
    const TemporaryFolder folder;
    folder.makeFile("a", 1);
    std::stop_source stop;
    stop.request_stop();
    FolderContents contents;
    EXPECT_FALSE(FileSystem::native()->folder(folder.url())->list(contents, stop.get_token()));
    EXPECT_EQ(contents.size(), 0U) << "before another entry is measured";
}

TEST(LinuxFileSystem, IsNotLedAwayByWhatReplacesAFolder)
{
    const TemporaryFolder folder;
    folder.makeFile("tree/sub/inner/a", 1);
    folder.makeFile("tree/other/a", 1);
    folder.makeFile("elsewhere/inner/many", 1);
    folder.makeFile("elsewhere/inner/more", 1);
    const auto top = FileSystem::native()->folder(folder.url("tree"));
    ASSERT_TRUE(list(*top));
    fs::rename(folder.path() / "tree/other", folder.path() / "moved");
    folder.makeLink("tree/other", "../elsewhere");
    EXPECT_FALSE(list(*top->folder("other"))) << "a link in the folder's place is not followed";
    fs::remove(folder.path() / "tree/other");
    ASSERT_EQ(::mkfifo((folder.path() / "tree/other").c_str(), 0600), 0);
    EXPECT_FALSE(list(*top->folder("other"))) << "nobody waits for a writer";

    const auto sub = top->folder("sub");
    ASSERT_TRUE(list(*sub));
    fs::rename(folder.path() / "tree/sub", folder.path() / "tree/renamed");
    folder.makeLink("tree/sub", "../elsewhere");
    const auto inner = list(*sub->folder("inner"));
    ASSERT_TRUE(inner) << "an open folder stays the same one";
    ASSERT_EQ(inner->size(), 1U);
    EXPECT_EQ((*inner)[0].name, "a");
    fs::remove_all(folder.path() / "tree/renamed");
    EXPECT_FALSE(list(*sub->folder("inner")));
    EXPECT_FALSE(list(*sub)) << "an open folder that is gone";
}

/// Makes openat2 a call that this thread's kernel does not know.
bool forgetOpenat2()
{
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter = {std::size(program), program};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

TEST(LinuxFileSystem, DoesNotEnterWhatIsMountedAfterTheListing)
{
    for (const bool isOldKernel : {false, true}) {
        const TemporaryFolder folder;
        folder.makeFile("sub/a", 1);
        folder.makeFile("other/b", 1);
        const auto top = FileSystem::native()->folder(folder.url());
        ASSERT_TRUE(list(*top));
        const Mount mount("tmpfs", folder.path() / "sub", "tmpfs", 0);
        if (!mount.isMounted()) {
            GTEST_SKIP() << "this user may not mount";
        }
        std::thread([&] {
            ASSERT_TRUE(!isOldKernel || forgetOpenat2());
            EXPECT_FALSE(list(*top->folder("sub"))) << isOldKernel;
            EXPECT_TRUE(list(*top->folder("other"))) << isOldKernel;
            EXPECT_TRUE(list(*FileSystem::native()->folder(folder.url("sub")))) << "a walk may begin there";
        }).join();
    }
}

std::ptrdiff_t openDescriptors()
{
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

TEST(LinuxFileSystem, WalksAnyDepthWithAHandfulOfDescriptors)
{
    const TemporaryFolder folder;
    constexpr int depth = 500;
    folder.makeDeepFolders("a rather long name for a folder", depth, 2);
    rlimit before = {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const auto openNow = openDescriptors();
    const rlimit few = {static_cast<rlim_t>(openNow) + 4, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &few);
    const FileNode root = scan(folder.url());
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(root.directoryCount(), depth + 1);
    EXPECT_EQ(root.fileCount(), 2 * (depth + 1));
    EXPECT_EQ(root.size(), 2 * (depth + 1));

    FileNode inner = root;
    while (inner.childrenOrNone().front().isDirectory()) {
        inner = inner.children()->front();
    }
    const FileNode again = scan(inner.url());
    EXPECT_GT(inner.url().path().size(), 15'000U);
    EXPECT_EQ(again.fileCount(), 2) << "a top whose path is too long for any call";
    EXPECT_EQ(scan(inner.children()->front().url()).size(), 1);
}

TEST(LinuxFileSystem, FindsTheWayBackOutOfDeepBranches)
{
    const TemporaryFolder folder;
    // Every folder holds two more, so that the walk comes back to folders that it had to close long ago.
    fs::path path;
    for (int level = 0; level < 100; ++level) {
        folder.makeFile(path / "b" / "x", 1);
        folder.makeFile(path / "c" / "y", 1);
        path /= "a";
    }
    const FileNode root = scan(folder.url());
    EXPECT_EQ(root.fileCount(), 200);
    EXPECT_EQ(root.directoryCount(), 1 + 99 + 200);
}

TEST(LinuxFileSystem, GoesOnWhenADeepFolderIsMovedAwayMeanwhile)
{
    const auto chain = [](std::size_t length) {
        fs::path path;
        for (std::size_t level = 0; level < length; ++level) {
            path /= "d";
        }
        return path;
    };
    constexpr std::size_t depth = 60;
    constexpr std::size_t depthOfMoved = 30;
    for (const bool isTopReplaced : {false, true}) {
        const TemporaryFolder folder;
        const auto openBefore = openDescriptors();
        std::vector<std::unique_ptr<Folder>> path;
        path.push_back(FileSystem::native()->folder(folder.url()));
        for (std::size_t level = 1; level <= depth; ++level) {
            folder.makeFile(chain(level) / "side/y", 1);
            path.push_back(path.back()->folder("d"));
            ASSERT_TRUE(list(*path.back()));
        }
        EXPECT_LE(openDescriptors(), openBefore + 16);
        // The folders above the moved one were closed long ago, and ".." of it leads elsewhere now.
        fs::rename(folder.path() / chain(depthOfMoved), folder.path() / "elsewhere");
        if (isTopReplaced) {
            fs::rename(folder.path() / "d", folder.path() / "old");
            for (std::size_t level = 1; level < depthOfMoved; ++level) {
                folder.makeFile(chain(level) / "side/y", 1);
            }
        }
        for (; path.size() > 1; path.pop_back()) {
            const bool isFound = path.size() > depthOfMoved || !isTopReplaced;
            EXPECT_EQ(list(*path.back()->folder("side")).has_value(), isFound) << path.size();
        }
    }
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
    EXPECT_EQ(textOfTree(children.at("Tool.app")), "Tool.app 20100 [application]\n");
    EXPECT_EQ(textOfTree(children.at("Plain.app")), "Plain.app/\n  tool 5\n");
    EXPECT_EQ(textOfTree(children.at("Upper.PrefPane")), "Upper.PrefPane 1 [application]\n");
    EXPECT_EQ(textOfTree(children.at("folder")), "folder/\n  Contents/\n    Info.plist 1 [system]\n");
    EXPECT_EQ(textOfTree(children.at("File.app")), "File.app 6 [application]\n");
    EXPECT_EQ(textOfTree(children.at("Kernel.kext")), "Kernel.kext 2 [application]\n");
    EXPECT_EQ(textOfTree(children.at("Link.app")), "Link.app 0\n");
    EXPECT_EQ(textOfTree(children.at("Elsewhere.app")), "Elsewhere.app/\n  Contents 0\n");
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

TEST(LinuxFileSystem, SurvivesTheKernelsOwnFiles)
{
    const FileNode process = scan(FileUrl::fromPath("/proc/" + std::to_string(::getpid())));
    EXPECT_GT(process.fileCount(), 50);
    EXPECT_EQ(process.size(), 0);
}

} // namespace
} // namespace morlaine
