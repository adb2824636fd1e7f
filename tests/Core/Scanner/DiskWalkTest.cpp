#include "Core/Scanner/DiskWalk.h"

#include "Support/FakeFileSystem.h"
#include "Support/TreeText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <memory>
#include <string>
#include <thread>

namespace morlaine {
namespace {

using test::FakeFileSystem;
using test::textOfTree;

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

class DiskWalkTest : public testing::Test {
protected:
    [[nodiscard]] FileNode scan(const std::string& path)
    {
        DiskWalk walk(m_fileSystem, m_stopSource.get_token(),
                      [this](const std::string& reported, std::int64_t files, std::int64_t dirs, std::int64_t size) {
                          m_reports.push_back(reported + ' ' + std::to_string(files) + ' ' + std::to_string(dirs) +
                                              ' ' + std::to_string(size));
                      });
        return walk.scan(FileUrl::fromPath(path));
    }

    void addFiles(std::initializer_list<std::pair<const char*, std::int64_t>> files)
    {
        for (const auto& [path, size] : files) {
            m_fileSystem->addFile(path, size);
        }
    }

    [[nodiscard]] std::string scanText(const std::string& path) { return textOfTree(scan(path)); }

    std::shared_ptr<FakeFileSystem> m_fileSystem = std::make_shared<FakeFileSystem>();
    std::stop_source m_stopSource;
    std::vector<std::string> m_reports;
};

TEST_F(DiskWalkTest, SortsBySizeAndKeepsTheListingOrderOfEqualSizes)
{
    addFiles({{"/r/b", 5}, {"/r/a.txt", 5}, {"/r/sub/x", 3}, {"/r/sub/y", 2}, {"/r/none", 0}});
    m_fileSystem->addFolder("/r/empty");
    addFiles({{"/r/c", 5}, {"/r/big.mp4", 9}});
    EXPECT_EQ(
        scanText("/r"),
        "r/\n  big.mp4 9 [video]\n  b 5\n  a.txt 5 [document]\n  sub/\n    x 3\n    y 2\n  c 5\n  none 0\n  empty/\n");
    m_fileSystem->addFolder("/").isListable = false;
    EXPECT_EQ(scan("/").name(), "") << "named by its last component alone where it has no contents";
}

TEST_F(DiskWalkTest, MeasuresTheSmallerOfLengthAndAllocation)
{
    m_fileSystem->addFile("/r/sparse", 1000, 100);
    m_fileSystem->addFile("/r/small", 10, 4096);
    m_fileSystem->addFile("/r/unknownAllocation", 77);
    m_fileSystem->addFile("/r/fallback", 1000).values->allocatedSize = 60;
    auto& both = m_fileSystem->addFile("/r/both", 1000, 50);
    both.values->allocatedSize = 20;
    auto& unknownLength = m_fileSystem->addFile("/r/unknownLength", 0, 4096);
    unknownLength.values->fileSize.reset();
    auto& unknownKind = m_fileSystem->addFile("/r/unknownKind.zip", 3);
    unknownKind.values->isDirectory.reset();
    EXPECT_EQ(scanText("/r"), "r/\n  sparse 100\n  unknownAllocation 77\n  fallback 60\n  both 50\n  small 10\n  "
                              "unknownKind.zip 3 [archive]\n  unknownLength 0\n");
}

TEST_F(DiskWalkTest, GoesOnBehindWhatCannotBeRead)
{
    m_fileSystem->addFile("/r/gone", 5).values.reset();
    m_fileSystem->addFolder("/r/locked.app").isListable = false;
    m_fileSystem->addFile("/r/here", 1);
    const FileNode root = scan("/r");
    EXPECT_EQ(textOfTree(root), "r/\n  here 1\n  gone 0\n  locked.app/\n");
    EXPECT_FALSE((*root.children())[1].children()) << "an item without values has no list";
    EXPECT_TRUE((*root.children())[2].children()) << "a folder without contents has an empty one";
    EXPECT_EQ(scanText("/missing"), "missing 0\n");
}

TEST_F(DiskWalkTest, NeverFollowsOrCountsLinks)
{
    auto& link = m_fileSystem->addFile("/r/link.jpg", 500);
    link.values->isSymbolicLink = true;
    auto& folderLink = m_fileSystem->addFolder("/r/folderLink");
    folderLink.values->isSymbolicLink = true;
    const FileNode root = scan("/r");
    EXPECT_EQ(textOfTree(root), "r/\n  link.jpg 0\n  folderLink 0\n");
    EXPECT_EQ(m_fileSystem->listings(), std::vector<std::string>{"/r"});
    EXPECT_EQ(scanText("/r/folderLink"), "folderLink 0\n") << "not even at the top";
}

TEST_F(DiskWalkTest, MeasuresAPackageAsOneApplication)
{
    m_fileSystem->addFolder("/r/Tool.app").values->isPackage = true;
    m_fileSystem->addFile("/r/Tool.app/Contents/main", 100, 60);
    addFiles({{"/r/Tool.app/Contents/.hidden", 1000}, {"/r/Tool.app/.svn/base", 1000}});
    m_fileSystem->addFolder("/r/Tool.app/Inner.app").values->isPackage = true;
    m_fileSystem->addFile("/r/Tool.app/Inner.app/x", 7);
    m_fileSystem->addFile("/r/Tool.app/link", 3).values->isSymbolicLink = true;
    m_fileSystem->addFile("/r/Tool.app/gone", 1000).values.reset();
    m_fileSystem->addFolder("/r/Tool.app/locked").isListable = false;
    m_fileSystem->addFolder("/r/Tool.app/mount").values->isVolume = true;
    m_fileSystem->addFile("/r/Tool.app/mount/elsewhere", 1000);
    auto& closed = m_fileSystem->addFolder("/r/Closed.app");
    closed.values->isPackage = true;
    closed.isListable = false;
    const FileNode root = scan("/r");
    EXPECT_EQ(textOfTree(root), "r/\n  Tool.app 70 [application]\n  Closed.app 0 [application]\n");
    EXPECT_EQ(scanText("/r/Tool.app"), "Tool.app 70 [application]\n");
}

TEST_F(DiskWalkTest, LeavesOutSystemPathsByTheirStandardisedText)
{
    for (const char* path : {"/Volumes/usb/a", "/System/Volumes/Data/b", "/dev/sda", "/.vol/1", "/.volumes-list",
                             "/.nofollowed/x", "/.resolved", "/home/dev/c", "/home/.vol/d", "/devices", "/Volumes2"}) {
        m_fileSystem->addFile(path, 1);
    }
    EXPECT_EQ(scanText("/"),
              "//\n  home/\n    dev/\n      c 1\n    .vol/\n      d 1\n  devices 1\n  Volumes2 1\n  Volumes/\n  "
              "System/\n    Volumes/\n  dev/\n  .vol/\n  .volumes-list 0\n  .nofollowed/\n  .resolved 0\n");
    EXPECT_EQ(scan("/home/..").size(), scan("/").size()) << "however the top is named";
    EXPECT_EQ(scanText("/Volumes"), "Volumes/\n  usb/\n    a 1\n") << "the top itself is never left out";
    EXPECT_EQ(scanText("/System/Volumes"), "Volumes/\n  Data/\n    b 1\n");
    EXPECT_EQ(scanText("/.vol"), ".vol/\n  1 0\n") << "but what stands below such a top is";
    EXPECT_EQ(scanText("/home/../dev"), "dev/\n  sda 1\n");
}

TEST_F(DiskWalkTest, StaysOnTheVolumeOfItsTop)
{
    m_fileSystem->addFile("/r/mount/a", 1);
    m_fileSystem->addFolder("/r/mount").values->isVolume = true;
    m_fileSystem->addFile("/r/other/b", 1);
    m_fileSystem->addFolder("/r/other").values->volumeIdentifier = 2;
    m_fileSystem->addFile("/r/foreign", 9).values->volumeIdentifier = 2;
    auto& link = m_fileSystem->addFile("/r/link", 9);
    link.values->volumeIdentifier = 2;
    link.values->isSymbolicLink = true;
    m_fileSystem->addFile("/r/unknown", 5).values->volumeIdentifier.reset();
    const FileNode root = scan("/r");
    EXPECT_EQ(textOfTree(root), "r/\n  unknown 5\n  mount/\n  other/\n  foreign 0\n  link 0\n");
    for (const FileNode& node : root.childrenOrNone()) {
        EXPECT_EQ(node.children().has_value(), node.name() != "unknown") << node.name();
    }
    EXPECT_EQ(scanText("/r/mount"), "mount/\n  a 1\n") << "the top may be a volume itself";

    m_fileSystem->addFolder("/r").values->volumeIdentifier.reset();
    EXPECT_EQ(scanText("/r"), "r/\n  foreign 9\n  unknown 5\n  other/\n    b 1\n  mount/\n  link 0\n")
        << "without a volume for the top, identifiers decide nothing";
}

TEST_F(DiskWalkTest, BuildsTheTopFromTheUrlAsGivenAndExcludesByTheResolvedOne)
{
    addFiles({{"/real/dir/a", 1}, {"/way/dir/a", 1}});
    m_fileSystem->addFolder("/way/dir/b");
    m_fileSystem->resolved["/way/dir"] = "/real/dir";
    const FileNode root = scan("/x/../way/./dir/");
    EXPECT_EQ(textOfTree(root), "dir/\n  a 1\n  b/\n");
    EXPECT_EQ(root.url().absoluteString(), "file:///x/../way/./dir/");
    EXPECT_EQ(root.children()->front().url().path(), "/x/../way/./dir/a");

    m_fileSystem->addFolder("/way/dir").values->isVolume = true;
    EXPECT_EQ(scan("/way/dir").childrenOrNone().size(), 0U) << "under another name the top is a mount like any other";
    m_fileSystem->addFolder("/real/dir").values->isVolume = true;
    EXPECT_EQ(scan("/real/dir").childrenOrNone().size(), 1U);
    m_fileSystem->addFolder("/way/dir");
    m_fileSystem->addFolder("/real/dir").values->volumeIdentifier = 2;
    EXPECT_EQ(scan("/way/dir").childrenOrNone().size(), 0U) << "and the volume is that of the resolved one";
}

TEST_F(DiskWalkTest, StopsAtTheNextItemOfAnyKind)
{
    for (int i = 0; i < 100; ++i) {
        m_fileSystem->addFile("/r/wide/" + std::to_string(i), 1);
        m_fileSystem->addFile("/r/wide/deep" + std::to_string(i) + "/x", 1);
        m_fileSystem->addFile("/r/wide/P.app/in" + std::to_string(i) + "/x", 1);
    }
    m_fileSystem->addFolder("/r/wide/P.app").values->isPackage = true;
    for (const std::string stopAt : {"", "/r", "/r/wide", "/r/wide/deep50", "/r/wide/P.app", "/r/wide/P.app/in3"}) {
        m_stopSource = std::stop_source();
        const std::size_t before = m_fileSystem->listings().size();
        m_fileSystem->onListing = [&](const std::string& path) {
            if (path == stopAt) {
                m_stopSource.request_stop();
            }
        };
        if (stopAt.empty()) {
            m_stopSource.request_stop();
        }
        EXPECT_THROW((void)scan("/r"), ScanCancelled) << stopAt;
        const auto listings = m_fileSystem->listings();
        if (stopAt.empty()) {
            EXPECT_EQ(listings.size(), before) << "nothing is touched";
        } else {
            EXPECT_EQ(listings.back(), stopAt) << "nothing is listed behind it";
        }
    }
    m_stopSource = std::stop_source();
    m_fileSystem->onListing = [this](const std::string&) { m_stopSource.request_stop(); };
    EXPECT_THROW((void)scan("/r/wide/P.app"), ScanCancelled) << "a package at the top";
    m_stopSource = std::stop_source();
    m_fileSystem->onOpening = std::exchange(m_fileSystem->onListing, nullptr);
    const std::size_t before = m_fileSystem->listings().size();
    EXPECT_THROW((void)scan("/r/wide/P.app"), ScanCancelled);
    EXPECT_EQ(m_fileSystem->listings().size(), before) << "it was opened, and no more";
}

TEST_F(DiskWalkTest, ReportsAtIntervalsWhatItCountedLast)
{
    using namespace std::chrono_literals;
    m_fileSystem->addFile("/r/a", 1);
    // Only the folder that cannot be listed is counted.
    m_fileSystem->addFile("/r/gone", 9).values.reset();
    m_fileSystem->addFile("/r/link", 9).values->isSymbolicLink = true;
    m_fileSystem->addFolder("/r/mount").values->isVolume = true;
    m_fileSystem->addFolder("/r/locked").isListable = false;
    addFiles({{"/r/slow/b", 2}, {"/r/slow/c", 3}});
    m_fileSystem->addFolder("/r/slowAndEmpty");
    m_fileSystem->addFolder("/r/next");
    m_fileSystem->addFolder("/r/slowPackage").values->isPackage = true;
    m_fileSystem->addFile("/r/slowPackage/d", 4);
    m_fileSystem->onListing = [](const std::string& path) {
        if (path.starts_with("/r/slow")) {
            std::this_thread::sleep_for(110ms);
        }
    };
    const auto start = std::chrono::steady_clock::now();
    (void)scan("/./r");
    EXPECT_LE(std::ssize(m_reports), (std::chrono::steady_clock::now() - start) / 100ms + 1);
    EXPECT_THAT(m_reports, testing::IsSupersetOf({"/./r/slow/b 2 3 3", "/./r/next 3 5 6", "/./r/slowPackage 4 5 10"}));
}

using DiskWalkDeathTest = DiskWalkTest;

TEST_F(DiskWalkDeathTest, EndsTheProgramWhenASumOverflows)
{
    m_fileSystem->addFile("/r/a/huge", largest);
    m_fileSystem->addFile("/r/b", 1);
    EXPECT_EXIT((void)scan("/r"), testing::KilledBySignal(SIGABRT), "^$");
    m_fileSystem->addFolder("/p").values->isPackage = true;
    m_fileSystem->addFile("/p/huge", largest);
    m_fileSystem->addFile("/p/more", 1);
    EXPECT_EXIT((void)scan("/p"), testing::KilledBySignal(SIGABRT), "^$");
    EXPECT_EQ(scan("/r/a").size(), largest) << "the largest size itself is fine";
}

} // namespace
} // namespace morlaine
