#include "Platform/ReadAhead.h"

#include "Core/Scanner/DiskWalk.h"
#include "Support/FakeFileSystem.h"
#include "Support/Gate.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace morlaine {
namespace {

using namespace std::chrono_literals;
using test::FakeFileSystem;
using test::Gate;
using test::TemporaryFolder;

constexpr std::size_t manyReaders = 8;

TEST(ReadAhead, ListsEachFolderOnceAndNoneThatTheWalkLeavesOut)
{
    const auto fileSystem = std::make_shared<FakeFileSystem>();
    for (const std::string folder : {"/a", "/Volumes/usb", "/System/Volumes/Data", "/dev", "/.vol", "/b/dev", "/b/c"}) {
        for (const char* inner : {"/x", "/only/P.app/in", "/y", "/P.app/in", "/link/in", "/mount/in"}) {
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
            (void)DiskWalk(
                fileSystem, {}, [](const auto&...) {}, readers)
                .scan(FileUrl::fromPath(top));
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
    const auto countWhenStill = [&] {
        std::size_t count = 0;
        for (int still = 0; still < 20; ++still) {
            const std::size_t now = fileSystem->listings().size();
            still = now == std::exchange(count, now) ? still : 0;
            std::this_thread::sleep_for(5ms);
        }
        return count;
    };
    const std::size_t ahead = countWhenStill();
    EXPECT_GT(ahead, 10U);
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
    EXPECT_EQ(fileSystem->listings().size(), folders + 1U);
}

TEST(ReadAhead, StopsAtOnceWhereverItIs)
{
    const TemporaryFolder folder;
    for (int number = 0; number < 200; ++number) {
        folder.makeFile(std::to_string(number % 20) + '/' + std::to_string(number) + "/a", 1);
    }
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
    EXPECT_EQ(walking.wait_for(5s), std::future_status::ready);
    gate->open();
}

} // namespace
} // namespace morlaine
