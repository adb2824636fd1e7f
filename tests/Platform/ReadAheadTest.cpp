#include "Platform/ReadAhead.h"

#include "Core/Scanner/DiskWalk.h"
#include "Platform/Background.h"
#include "Platform/ReadAheadLimits.h"
#include "Support/FakeFileSystem.h"
#include "Support/Gate.h"
#include "Support/TemporaryFolder.h"
#include "Support/TreeText.h"
#include "Support/Wait.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <future>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <sys/resource.h>

namespace morlaine {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::FakeFileSystem;
using test::Gate;
using test::TemporaryFolder;

constexpr std::size_t manyReaders = 8;

std::string scanText(std::shared_ptr<const FileSystem> fileSystem, const FileUrl& url, std::size_t readers)
{
    DiskWalk walk(
        std::move(fileSystem), {}, [](const auto&...) {}, readers);
    return test::textOfTree(walk.scan(url));
}

/// A random tree with links, bundles, empty folders, and deep and wide folders.
void fill(const TemporaryFolder& folder, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<fs::path> folders{""};
    for (int number = 0; number < 300; ++number) {
        const fs::path path = folders[random() % folders.size()] / std::to_string(number);
        switch (random() % 8) {
        case 0:
            folder.makeLink(path, "/");
            break;
        case 1:
            folder.makeFile(path.native() + ".app/Contents/Info.plist", static_cast<std::size_t>(number));
            break;
        case 2:
        case 3:
            folder.makeFile(path, random() % 5);
            break;
        default:
            folder.makeFolder(path);
            folders.push_back(path);
        }
    }
}

TEST(ReadAhead, YieldsTheSameTree)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        const TemporaryFolder folder;
        fill(folder, seed);
        const std::string expected = scanText(FileSystem::native(), folder.url(), 0);
        for (const std::size_t readers : {1U, 2U, 8U}) {
            EXPECT_EQ(scanText(FileSystem::native(), folder.url(), readers), expected) << seed;
        }
    }
}

TEST(ReadAhead, ListsEachFolderOnceAndNoneThatTheWalkLeavesOut)
{
    const auto fileSystem = std::make_shared<FakeFileSystem>();
    for (const std::string folder : {"/a", "/Volumes/usb", "/System/Volumes/Data", "/dev", "/.vol", "/b/dev", "/b/c"}) {
        for (const char* inner : {"/x", "/only/P.app/in", "/y", "/P.app/in", "/P.app/.in", "/link/in", "/mount/in"}) {
            fileSystem->addFile(folder + inner + "/file", 1);
        }
        fileSystem->addFolder(folder + "/P.app").values->isPackage = true;
        fileSystem->addFolder(folder + "/only/P.app").values->isPackage = true;
        fileSystem->addFolder(folder + "/link").values->isSymbolicLink = true;
        fileSystem->addFolder(folder + "/mount").values->isVolume = true;
    }
    fileSystem->addFolder("/sixteen letters/mount").values->isVolume = true;
    const auto listingsOf = [&](std::size_t readers) {
        const std::size_t before = fileSystem->listings().size();
        for (const char* top : {"/", "/sixteen letters", "/a/P.app"}) {
            (void)scanText(fileSystem, FileUrl::fromPath(top), readers);
        }
        const auto all = fileSystem->listings();
        return std::multiset<std::string>(all.begin() + static_cast<std::ptrdiff_t>(before), all.end());
    };
    const auto expected = listingsOf(0);
    for (int round = 0; round < 50; ++round) {
        EXPECT_EQ(listingsOf(manyReaders), expected);
    }
}

TEST(ReadAhead, HoldsBoundedContentsAheadAndReadsNearestFirst)
{
    const auto fileSystem = std::make_shared<FakeFileSystem>();
    constexpr int folders = 200;
    constexpr int files = 1'000;
    for (int i = 0; i < folders; ++i) {
        for (int j = 0; j < files; ++j) {
            fileSystem->addFile("/r/" + std::to_string(1'000 + i) + '/' + std::string(90, 'f') + std::to_string(j), 1);
        }
    }
    const auto top =
        readingAhead(fileSystem->folder(FileUrl::fromPath("/r")), "/r", {[](const auto&...) { return true; }, 16}, 2);
    FolderContents contents;
    ASSERT_TRUE(top->list(contents, {}));
    const auto count = [&] { return fileSystem->listings().size(); };
    ASSERT_TRUE(test::waitUntil([&] { return count() > 10; }));
    std::size_t ahead = 0;
    for (int still = 0; still < 20; ++still) {
        std::this_thread::sleep_for(5ms);
        still = ahead == std::exchange(ahead, count()) ? still : 0;
    }
    EXPECT_LT(ahead, 70U) << "six megabytes and what the helpers are about";
    for (const std::string& path : fileSystem->listings()) {
        EXPECT_LE(path, "/r/" + std::to_string(1'000 + ahead)) << "only what is nearest";
    }
    for (std::size_t i = 0; i < contents.size(); ++i) {
        const auto folder = top->folder(contents[i].name);
        FolderContents inner;
        ASSERT_TRUE(folder->list(inner, {}));
        EXPECT_EQ(inner.size(), static_cast<std::size_t>(files));
    }
    EXPECT_GE(count(), folders + 1U);
    EXPECT_LE(count(), folders + 10U) << "the walk gives up a folder when the memory is full, once in 25 folders";
}

TEST(ReadAhead, StartsMoreHelpersWhileListingsSleep)
{
    const auto fileSystem = std::make_shared<FakeFileSystem>();
    for (int i = 0; i < 1'000; ++i) {
        fileSystem->addFile("/r/" + std::to_string(i) + "/file", 1);
    }
    std::atomic<int> listing = 0;
    std::atomic<int> most = 0;
    fileSystem->onListing = [&](const std::string&) {
        const int now = ++listing;
        for (int before = most; before < now && !most.compare_exchange_weak(before, now);) {
        }
        std::this_thread::sleep_for(1ms);
        --listing;
    };
    (void)scanText(fileSystem, FileUrl::fromPath("/r"), 2);
    EXPECT_TRUE(Background::waitForAll(test::longEnough).empty());
    EXPECT_GT(most, 4);
    EXPECT_LE(most, 9) << "eight helpers and the walk";
}

TEST(ReadAheadLimits, FollowWhatListingsAndTheWalkNeed)
{
    constexpr std::size_t piece = std::size_t{1} << 20;
    ReadAheadLimits limits(2);
    for (const auto& [hasSlept, expected] : {std::pair(true, 3U), {false, 2U}, {false, 2U}, {true, 3U}, {true, 4U}}) {
        limits.noteListing(hasSlept);
        EXPECT_EQ(limits.helpers(), expected);
    }
    EXPECT_FALSE(limits.makeRoom()) << "there is room";
    std::size_t held = 0;
    for (std::size_t times = 1; times == 1 || limits.makeRoom(); ++times) {
        for (; !limits.isFull(); ++held) {
            limits.hold(piece);
        }
        EXPECT_EQ(held, times * 6);
    }
    EXPECT_EQ(held, 24U) << "the walk may ask for more in vain";
    for (; held > 3; --held) {
        EXPECT_EQ(limits.release(piece), held == 22) << held;
    }
    limits.hold(3 * piece);
    EXPECT_TRUE(limits.isFull()) << "the limit falls back";
}

TEST(ReadAhead, StaysInTheTreeHoweverItChanges)
{
    const TemporaryFolder folder;
    folder.makeFile("outside/a/escaped", 1);
    std::atomic<bool> isOver = false;
    std::thread changes([&] {
        std::mt19937 random(1);
        std::error_code ignored;
        while (!isOver) {
            const fs::path path = folder.path() / "tree" / std::to_string(random() % 8);
            const fs::path other = folder.path() / "tree" / std::to_string(random() % 8);
            switch (random() % 5) {
            case 0:
                fs::remove_all(path, ignored);
                break;
            case 1:
                fs::rename(path, other, ignored);
                break;
            case 2:
                fs::remove_all(path, ignored);
                fs::create_directory_symlink(folder.path() / "outside", path, ignored);
                break;
            default:
                fs::create_directories(path / "a/b/c", ignored);
                fs::create_directories(path / "b/a", ignored);
            }
        }
    });
    folder.makeFolder("tree");
    for (int round = 0; round < 200; ++round) {
        EXPECT_EQ(scanText(FileSystem::native(), folder.url("tree"), manyReaders).find("escaped"), std::string::npos);
    }
    isOver = true;
    changes.join();
}

TEST(ReadAhead, StopsAtOnceWhereverItIs)
{
    const TemporaryFolder folder;
    fill(folder, 1);
    std::mt19937 random(2);
    for (int round = 0; round < 200; ++round) {
        std::stop_source stop;
        std::thread cancels([&, delay = random() % 2'000] {
            std::this_thread::sleep_for(std::chrono::microseconds(delay));
            stop.request_stop();
        });
        try {
            DiskWalk walk(
                FileSystem::native(), stop.get_token(), [](const auto&...) {}, manyReaders);
            EXPECT_GT(walk.scan(folder.url()).directoryCount(), 100);
        } catch (const ScanCancelled&) {
            EXPECT_TRUE(stop.stop_requested());
        }
        cancels.join();
    }
}

TEST(ReadAhead, CanBeCancelledWhileAHelperHangs)
{
    const auto fileSystem = std::make_shared<FakeFileSystem>();
    const auto gate = std::make_shared<Gate>();
    for (int i = 0; i < 100; ++i) {
        fileSystem->addFile("/r/" + std::to_string(i) + "/sub/a", 1);
    }
    const auto walker = std::make_shared<std::atomic<std::thread::id>>();
    fileSystem->onListing = [gate, walker](const std::string& path) {
        if (std::this_thread::get_id() != walker->load()) {
            gate->pass();
        } else if (path != "/r") {
            gate->waitForArrival();
        }
    };
    std::stop_source stop;
    auto walking = std::async(std::launch::async, [&] {
        *walker = std::this_thread::get_id();
        DiskWalk walk(
            fileSystem, stop.get_token(), [](const auto&...) {}, 2);
        EXPECT_THROW((void)walk.scan(FileUrl::fromPath("/r")), ScanCancelled);
    });
    gate->waitForArrival();
    std::this_thread::sleep_for(200ms);
    EXPECT_EQ(walking.wait_for(0s), std::future_status::timeout) << "the walk needs what hangs";
    stop.request_stop();
    EXPECT_EQ(walking.wait_for(test::longEnough), std::future_status::ready);
    gate->open();
}

TEST(ReadAhead, GetsAlongWithFewDescriptors)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the undefined behaviour sanitizer checks pointers through a pipe, for which none is left";
#endif
    const TemporaryFolder folder;
    for (int level = 0; level < 40; ++level) {
        fs::path path;
        for (int i = 0; i < level; ++i) {
            path /= "d";
        }
        folder.makeFile(path / "left/in/a", 1);
        folder.makeFile(path / "right/in/b", 1);
    }
    const std::string expected = scanText(FileSystem::native(), folder.url(), 0);
    const auto openNow = std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    rlimit before = {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    for (int free = 4; free < 16; ++free) {
        const rlimit few = {static_cast<rlim_t>(openNow + free), before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &few);
        const std::string tree = scanText(FileSystem::native(), folder.url(), manyReaders);
        ::setrlimit(RLIMIT_NOFILE, &before);
        EXPECT_EQ(tree, expected) << free;
        EXPECT_TRUE(Background::waitForAll(test::longEnough).empty());
    }
}

} // namespace
} // namespace morlaine
