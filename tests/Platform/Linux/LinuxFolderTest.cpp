#include "Platform/FileSystem.h"
#include "Support/Mount.h"
#include "Support/TemporaryFolder.h"
#include "Support/TreeText.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <stop_token>
#include <thread>
#include <vector>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>

namespace morlaine {
namespace {

namespace fs = std::filesystem;
using test::Mount;
using test::scan;
using test::TemporaryFolder;

std::optional<FolderContents> list(Folder& folder)
{
    FolderContents contents;
    return folder.list(contents, {}) ? std::optional(std::move(contents)) : std::nullopt;
}

TEST(LinuxFolder, StopsInTheMiddleOfAListing)
{
    const TemporaryFolder folder;
    folder.makeFile("a", 1);
    std::stop_source stop;
    stop.request_stop();
    FolderContents contents;
    EXPECT_FALSE(FileSystem::native()->folder(folder.url())->list(contents, stop.get_token()));
    EXPECT_EQ(contents.size(), 0U) << "before another entry is measured";
}

TEST(LinuxFolder, IsNotLedAwayByWhatReplacesAFolder)
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

/// Makes openat2 fail with ENOSYS on this thread.
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

TEST(LinuxFolder, DoesNotEnterWhatIsMountedAfterTheListing)
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

TEST(LinuxFolder, WalksAnyDepthWithAHandfulOfDescriptors)
{
    const TemporaryFolder folder;
    constexpr int depth = 500;
    folder.makeDeepFolders("a rather long name for a folder", depth, 2);
    // Here every folder has two more subfolders, so that the walk returns to folders that were closed long ago.
    const TemporaryFolder branched;
    fs::path path;
    for (int level = 0; level < 100; ++level) {
        branched.makeFile(path / "b" / "x", 1);
        branched.makeFile(path / "c" / "y", 1);
        path /= "a";
    }
    rlimit before = {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const auto openNow = openDescriptors();
    const rlimit few = {static_cast<rlim_t>(openNow) + 4, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &few);
    const FileNode root = scan(folder.url());
    const FileNode branches = scan(branched.url());
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(root.directoryCount(), depth + 1);
    EXPECT_EQ(root.size(), 2 * (depth + 1));
    EXPECT_EQ(branches.directoryCount(), 1 + 99 + 200);
    EXPECT_EQ(branches.size(), 200);

    FileNode inner = root;
    while (inner.childrenOrNone().front().isDirectory()) {
        inner = inner.children()->front();
    }
    const FileNode again = scan(inner.url());
    EXPECT_GT(inner.url().path().size(), 15'000U);
    EXPECT_EQ(again.fileCount(), 2) << "a top whose path is too long for any call";
    EXPECT_EQ(scan(inner.children()->front().url()).size(), 1);
}

TEST(LinuxFolder, GoesOnWhenADeepFolderIsMovedAwayMeanwhile)
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
        // The folders above the moved one are closed by now, and its ".." leads elsewhere.
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

} // namespace
} // namespace morlaine
