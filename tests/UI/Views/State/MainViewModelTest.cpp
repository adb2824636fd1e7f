#include "UI/Views/State/MainViewModel.h"

#include "Platform/Background.h"
#include "Support/Gate.h"
#include "Support/MemoryLimit.h"
#include "Support/ModelFixture.h"
#include "Support/TreeText.h"
#include "Support/Wait.h"

#include <QTimer>

#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>

namespace morlaine {
namespace {

using test::Gate;
using test::ModelFixture;
using test::nameOf;
using test::nodeNamed;
using test::treeFromText;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::string_view nestedFolders = "root/\n  A/\n    B/\n      C/\n      f 1\n  D/";

/// "A B selected B <": the zoom path, the selection, and whether going back (<) and forward (>) is possible.
std::string viewOf(const MainViewModel& model)
{
    std::string text;
    for (const FileNode& node : model.zoomStack()) {
        text += std::string(node.name()) + ' ';
    }
    return text + "selected " + nameOf(model.selectedNode()) + (model.canGoBack() ? " <" : "") +
           (model.canGoForward() ? " >" : "");
}

void navigate(MainViewModel& model, const FileNode& root, const std::string& operation)
{
    if (operation == "out") {
        model.zoomOut();
    } else if (operation == "top") {
        model.zoomToRoot();
    } else if (operation == "back") {
        model.navigateBack();
    } else if (operation == "forward") {
        model.navigateForward();
    } else {
        model.zoomIn(nodeNamed(root, operation));
    }
}

TEST(MainViewModelNavigation, MovesAlongTheZoomPathAndItsHistory)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", "selected root"},
        {"f", "selected root"},
        {"A B", "A B selected B <"},
        {"A B back", "A selected A < >"},
        {"A B back forward", "A B selected B <"},
        {"A back", "selected root >"},
        {"A back forward", "A selected A <"},
        {"A out", "selected root <"},
        {"A out back", "selected A < >"},
        {"A out back forward", "selected root <"},
        {"A B out out", "selected root <"},
        {"A B top", "selected root <"},
        {"A B top back", "selected A < >"},
        {"A B back D", "A D selected D <"},
        {"A B back top forward", "B selected B <"},
        {"A B C back back", "A selected A < >"},
        {"A A", "A A selected A <"},
        {"A A back", "A selected A < >"},
        {"A root back", "A selected A < >"},
        {"back", "selected root"},
        {"forward", "selected root"},
        {"out", "selected root"},
    };
    ModelFixture fixture;
    std::optional<std::pair<std::vector<FileNode>, std::optional<FileNode>>> announced; // the state at the first signal
    QObject::connect(fixture.model.get(), &MainViewModel::objectWillChange, [&] {
        announced = announced.value_or(std::pair(fixture.model->zoomStack(), fixture.model->selectedNode()));
    });
    for (const auto& [operationNames, view] : cases) {
        fixture.show(nestedFolders);
        const FileNode root = *fixture.model->currentRootNode();
        std::istringstream operations(operationNames);
        for (std::string operation; operations >> operation;) {
            const std::pair before(fixture.model->zoomStack(), fixture.model->selectedNode());
            announced.reset();
            navigate(*fixture.model, root, operation);
            EXPECT_EQ(announced.value_or(before), before) << operationNames << ": announced before it happens";
        }
        EXPECT_EQ(viewOf(*fixture.model), view) << operationNames;
    }
}

class MainViewModelTest : public testing::Test, protected ModelFixture {
protected:
    MainViewModelTest()
    {
        for (const std::string root : {"/r", "/s"}) {
            fileSystem->addFile(root + "/a.png", 3);
            fileSystem->addFile(root + "/sub/b", 4);
        }
    }

    static FileUrl url(const char* path) { return FileUrl::fromPath(path); }
};

TEST_F(MainViewModelTest, ShowsAndSavesAFinishedScan)
{
    show(nestedFolders);
    model->zoomIn(nodeNamed(*model->currentRootNode(), "A"));
    model->setSearchText(QStringLiteral("b"));
    model->setSelectedCategory(FileCategory::image);
    model->scan(url("/r"));
    EXPECT_EQ(viewOf(*model), "selected none") << "the session begins anew at once";
    EXPECT_EQ(model->searchText(), QString());
    EXPECT_TRUE(model->scanner().isScanning());
    std::vector<std::string> changes;
    QObject::connect(model.get(), &MainViewModel::objectWillChange, [&] {
        if (!model->scanner().isScanning()) {
            changes.push_back(nameOf(model->currentRootNode()) + ' ' + nameOf(model->selectedNode()) + ' ' +
                              std::to_string(model->scanHistory().size()));
        }
    });
    ASSERT_TRUE(waitForScan());
    EXPECT_THAT(std::vector(changes.end() - 3, changes.end()), ElementsAre("none none 0", "r none 0", "r r 0"))
        << "each is announced before it happens";
    EXPECT_THAT(model->scanHistory(), SizeIs(1));
    EXPECT_EQ(model->scanHistory()[0].totalSize, 7);
    EXPECT_EQ(model->selectedCategory(), FileCategory::image) << "filters survive";
    EXPECT_TRUE(model->searchResults().empty()) << "until an input is assigned again";
    model->setMinSizeFilter(3);
    ASSERT_EQ(model->searchResults().size(), 1U);
    EXPECT_EQ(model->searchResults()[0].node().name(), "a.png");
    EXPECT_TRUE(model->highlightIDs().contains(model->searchResults()[0].id()));
}

TEST_F(MainViewModelTest, KeepsAnEmptySessionAfterACancelledScan)
{
    const Gate gate;
    fileSystem->onListing = gate;
    model->scan(url("/r"));
    gate.waitForArrival();
    model->cancelScan();
    EXPECT_FALSE(model->scanner().isScanning());
    gate.open();
    ASSERT_TRUE(waitForScan());
    EXPECT_EQ(model->scanner().errorMessage(), QStringLiteral("Scan cancelled by user."));
    bool hasWatcherLooked = false; // the watcher was started earlier, with a shorter interval
    QTimer::singleShot(700, [&] { hasWatcherLooked = true; });
    ASSERT_TRUE(test::waitUntil([&] { return hasWatcherLooked; }));
    EXPECT_EQ(viewOf(*model), "selected none");
    EXPECT_THAT(model->scanHistory(), IsEmpty());
}

TEST_F(MainViewModelTest, SavesTwiceWhenTwoWatchersSeeOneResult)
{
    const Gate gate;
    fileSystem->onListing = gate;
    model->scan(url("/r"));
    gate.waitForArrival(); // a walk that is cancelled before it begins reports so at once, which ends the watching
    model->cancelScan();
    model->scan(url("/s"));
    QTimer::singleShot(700, [gate] { gate.open(); }); // both have looked once by then
    ASSERT_TRUE(test::waitUntil([this] { return model->scanHistory().size() == 2; }));
    EXPECT_EQ(nameOf(model->currentRootNode()), "s");
}

TEST_F(MainViewModelTest, SavesAReopenedTreeThatAnOlderWatcherComesUpon)
{
    const Gate gate; // otherwise the walk could end before it is cancelled, and bring its own tree
    fileSystem->onListing = gate;
    model->scan(url("/r"));
    gate.waitForArrival();
    show(nestedFolders);
    EXPECT_THAT(model->scanHistory(), IsEmpty());
    EXPECT_TRUE(test::waitUntil([this] { return model->scanHistory().size() == 1; }));
    EXPECT_EQ(viewOf(*model), "selected root");
    gate.open();
}

TEST_F(MainViewModelTest, ReopensAnEarlierScan)
{
    const FileNode tree = treeFromText("earlier/\n  x.png 5\n  sub/\n    y 2");
    model->setSelectedCategory(FileCategory::image);
    show(tree);
    EXPECT_EQ(model->currentRootNode(), tree);
    EXPECT_EQ(viewOf(*model), "selected earlier");
    EXPECT_EQ(model->scanner().scannedFilesCount(), 2);
    EXPECT_EQ(model->scanner().scannedDirsCount(), 2);
    EXPECT_EQ(model->scanner().totalSize(), 7);
    EXPECT_EQ(model->scanner().scanResult(), tree);
    EXPECT_TRUE(model->searchResults().empty());
    EXPECT_THAT(model->scanHistory(), IsEmpty()) << "nothing is saved again";
    model->setSelectedCategory(FileCategory::image);
    EXPECT_EQ(model->searchResults().size(), 1U);
    model->setSelectedCategory(std::nullopt);
    EXPECT_TRUE(model->searchResults().empty()) << "no input, no search";
    model->setSearchText(QStringLiteral(" "));
    EXPECT_EQ(model->searchResults().size(), 4U) << "a space is an input that every node passes";
    model->setSearchText(QString());
    EXPECT_TRUE(model->highlightIDs().empty());
}

TEST_F(MainViewModelTest, DropsAnEntryWhoseTreeIsGone)
{
    const HistoricalScan kept = store->saveScan(treeFromText("kept/"), 0, 1);
    const HistoricalScan lost = store->saveScan(treeFromText("lost/"), 0, 1);
    const std::filesystem::path file =
        folder.path() / "share/com.morlaine.Morlaine/Scans" / (lost.id.toString() + ".json");
    ASSERT_TRUE(test::waitUntil([&] { return std::filesystem::remove(file); }));
    show(nestedFolders);
    model->loadHistory();
    model->scan(url("/r"));
    model->loadHistoricalScan(model->scanHistory()[0]);
    EXPECT_FALSE(model->scanner().isScanning());
    EXPECT_EQ(viewOf(*model), "selected none");
    EXPECT_THAT(model->scanHistory(), ElementsAre(kept));
    EXPECT_EQ(model->scanner().errorMessage(), QStringLiteral("Failed to load historical scan tree cache."));
    model->setSearchText(QStringLiteral("r"));
    EXPECT_TRUE(model->searchResults().empty()) << "the scan had dropped the index of the tree before";
    show(nestedFolders);
    model->loadHistoricalScan(lost);
    model->setSearchText(QStringLiteral("r"));
    EXPECT_FALSE(model->searchResults().empty()) << "reopening leaves it until another takes its place";
    model->deleteHistoryItem(kept.id);
    EXPECT_THAT(model->scanHistory(), IsEmpty());
}

TEST_F(MainViewModelTest, LosesNothingWhereMemoryDoesNotSuffice)
{
    if (!test::MemoryLimit::isPossible) {
        GTEST_SKIP() << "the sanitizers take all address space";
    }
    constexpr int count = 1'000'000;
    const FileNode root = test::folderOfFiles(count);
    const HistoricalScan scan = store->saveScan(root, count, 1);
    ASSERT_TRUE(Background::waitForAll(test::longEnough).empty());
    model->loadHistory();
    {
        const test::MemoryLimit limit;
        model->loadHistoricalScan(scan);
    }
    EXPECT_EQ(viewOf(*model), "selected none");
    EXPECT_EQ(model->scanner().errorMessage(), QStringLiteral("There is not enough memory for this."));
    EXPECT_THAT(model->scanHistory(), ElementsAre(scan)) << "its tree is not broken";
    model->loadHistoricalScan(scan);
    EXPECT_EQ(model->currentRootNode(), root);
    {
        const test::MemoryLimit limit;
        model->setSearchText(QStringLiteral("1"));
    }
    EXPECT_TRUE(model->searchResults().empty()) << "given up, and nothing ends";
    model->setSearchText(QStringLiteral("12"));
    EXPECT_FALSE(model->searchResults().empty());
}

TEST_F(MainViewModelTest, GoesWhateverIsStillUnderWay)
{
    const Gate gate;
    fileSystem->onListing = gate;
    model->scan(url("/r")); // starts a walk and a watcher
    gate.waitForArrival();
    restart();
    gate.open();
    model->scan(url("/s"));
    ASSERT_TRUE(waitForScan()); // the tree is being written
    model.reset();
    EXPECT_TRUE(test::waitUntil([this] { return store->loadScanTree(store->loadHistory()[0].id).has_value(); }));
}

TEST_F(MainViewModelTest, ListsVolumesWithASize)
{
    volumes->list = {{url("/"), "System", 1000, 250},
                     {url("/media/stick"), "", 10, std::nullopt},
                     {url("/media/unknown"), "a", std::nullopt, 1},
                     {url("/media/empty"), "b", 0, 0}};
    restart();
    ASSERT_THAT(model->volumes(), SizeIs(2));
    EXPECT_EQ(model->volumes()[0].percentUsed(), 0.75);
    EXPECT_EQ(model->volumes()[1].name, "stick");
    EXPECT_EQ(model->volumes()[1].percentUsed(), 1.0);
    volumes->list.clear();
    model->loadVolumes();
    ASSERT_THAT(model->volumes(), SizeIs(1));
    const VolumeInfo& placeholder = model->volumes()[0];
    EXPECT_EQ(placeholder.name, "Macintosh HD");
    EXPECT_EQ(placeholder.formattedFreeSize() + placeholder.formattedTotalSize(), "274.88 GB549.76 GB");
    EXPECT_EQ((VolumeInfo{{}, url("/"), "", 0, 5}.percentUsed()), 0.0);
}

} // namespace
} // namespace morlaine
