#include "UI/Views/Sidebar/SidebarView.h"

#include "Support/Gate.h"
#include "Support/ModelFixture.h"
#include "Support/TreeText.h"
#include "Support/Widgets.h"
#include "UI/Styles/Theme.h"
#include "UI/Views/Sidebar/PlaceRow.h"
#include "UI/Views/Sidebar/RecentScanDelegate.h"
#include "UI/Views/Sidebar/RecentScansList.h"
#include "UI/Views/Sidebar/SidebarText.h"
#include "UI/Views/Sidebar/SpaceBreakdown.h"

#include <QAccessible>

#include <gmock/gmock.h>

namespace morlaine {
namespace {

using test::Gate;
using test::ModelFixture;
using test::treeFromText;
using testing::ElementsAre;
using testing::SizeIs;

constexpr std::int64_t gigabyte = 1'000'000'000;

/// The sidebar in its own window, with two volumes and two favourites.
class SidebarViewTest : public testing::Test {
protected:
    SidebarViewTest()
    {
        fixture.volumes->list = {{FileUrl::fromPath("/"), "System", 500 * gigabyte, 120 * gigabyte},
                                 {FileUrl::fromPath("/mnt"), "Back\u202Eup", 500 * gigabyte, 1 * gigabyte}};
        fixture.userFolders.desktop = FileUrl::fromPath("/home/me/Desktop");
        fixture.fileSystem->addFile("/home/me/file", 5);
        open();
    }

    ~SidebarViewTest() override { gate.open(); }

    void open(QSize size = {240, 600})
    {
        view.reset();
        fixture.restart();
        view = std::make_unique<SidebarView>(*fixture.model);
        view->resize(size);
        view->show();
        view->activateWindow();
        EXPECT_TRUE(test::waitUntilExposed(view.get()));
    }

    void save(const std::string& folder)
    {
        fixture.store->saveScan(treeFromText(folder + "/\n  file 2000", "/data"), 1, 1);
    }

    [[nodiscard]] bool waitForTrees() const
    {
        const auto hasTree = [&](const HistoricalScan& scan) {
            return fixture.store->loadScanTree(scan.id).has_value();
        };
        return test::waitUntil([&] { return std::ranges::all_of(fixture.store->loadHistory(), hasTree); });
    }

    void scanUntilGate()
    {
        fixture.fileSystem->onListing = gate;
        fixture.model->scan(FileUrl::fromPath("/home/me"));
        EXPECT_TRUE(test::waitUntil([&] { return !place(0).isEnabled(); }));
    }

    [[nodiscard]] PlaceRow& place(int number) const { return *view->findChildren<PlaceRow*>().at(number); }
    [[nodiscard]] RecentScansList& recent() const { return *view->findChild<RecentScansList*>(); }

    [[nodiscard]] std::vector<std::string> recentNames() const
    {
        std::vector<std::string> names;
        for (int row = 0; row < recent().model()->rowCount(); ++row) {
            names.push_back(recent().model()->index(row, 0).data().toString().toStdString());
        }
        return names;
    }

    [[nodiscard]] QRect row(int number) const { return recent().visualRect(recent().model()->index(number, 0)); }
    [[nodiscard]] QPoint onRow(int number) const { return row(number).center(); }
    [[nodiscard]] QPoint onTrash(int number) const
    {
        return RecentScanDelegate::trashRect(row(number), Qt::LeftToRight).center();
    }
    [[nodiscard]] std::vector<std::string> labels() const { return test::labelsIn(*view); }
    [[nodiscard]] std::string shown() const { return test::nameOf(fixture.model->currentRootNode()); }

    const Gate gate;
    ModelFixture fixture;
    std::unique_ptr<SidebarView> view;
};

TEST_F(SidebarViewTest, ListsPlacesWithTheirTexts)
{
    std::vector<std::string> rows;
    for (const PlaceRow* row : view->findChildren<PlaceRow*>()) {
        rows.push_back(
            (row->accessibleName() + u'|' + row->accessibleDescription() + u'|' + row->toolTip()).toStdString());
    }
    EXPECT_THAT(rows, ElementsAre("System|120 GB free of 500 GB|Scan System",
                                  "Back\uFFFDup|1 GB free of 500 GB|Scan Back\uFFFDup", "Home||Scan Home",
                                  "Desktop||Scan Desktop"));
    EXPECT_THAT(labels(), ElementsAre("Devices", "Favorites", "Recent Scans", "No recent scans"));
    EXPECT_EQ(usageColor(0.9), Theme::blue);
    EXPECT_EQ(usageColor(0.91), Theme::red);
}

TEST_F(SidebarViewTest, ShowsTheCueOnlyUnderThePointerAndWhileNothingIsScanned)
{
    QTest::mouseMove(&place(1));
    EXPECT_TRUE(test::waitUntil([&] { return place(1).isCueShown(); }));
    EXPECT_FALSE(place(0).isCueShown());
    QTest::mouseMove(&place(2));
    EXPECT_TRUE(test::waitUntil([&] { return place(2).isCueShown() && !place(1).isCueShown(); }));

    scanUntilGate();
    EXPECT_FALSE(place(2).isCueShown());
    QTest::mouseMove(&place(0));
    QCoreApplication::processEvents();
    EXPECT_FALSE(place(0).isCueShown());
    gate.open();
    EXPECT_TRUE(test::waitUntil([&] { return place(0).isCueShown(); }));
}

TEST_F(SidebarViewTest, AClickOrAKeyScansAPlaceUnlessAScanRuns)
{
    QTest::mouseClick(&place(2), Qt::LeftButton);
    EXPECT_TRUE(fixture.model->scanner().isScanning());
    ASSERT_TRUE(fixture.waitForScan());
    EXPECT_EQ(fixture.model->currentRootNode()->url(), FileUrl::fromPath("/home/me"));

    ASSERT_TRUE(test::waitUntil([&] { return place(2).isEnabled(); }));
    place(2).setFocus(Qt::TabFocusReason);
    for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
        QTest::keyClick(&place(2), key);
        EXPECT_TRUE(fixture.model->scanner().isScanning());
        ASSERT_TRUE(test::waitUntil([&] { return !place(2).isEnabled() && !place(2).hasFocus(); }));
        ASSERT_TRUE(test::waitUntil([&] { return place(2).isEnabled(); }));
        EXPECT_TRUE(place(2).hasFocus()) << "again, after the scan";
        ASSERT_TRUE(fixture.waitForScan());
    }

    scanUntilGate();
    QTest::mouseClick(&place(0), Qt::LeftButton);
    gate.open();
    ASSERT_TRUE(fixture.waitForScan());
    EXPECT_EQ(fixture.model->currentRootNode()->url(), FileUrl::fromPath("/home/me"));
}

TEST_F(SidebarViewTest, TheTrashRemovesAndTheRestOfTheRowOpens)
{
    for (const char* folder : {"first", "second", "third"}) {
        save(folder);
    }
    ASSERT_TRUE(waitForTrees());
    open();
    ASSERT_THAT(recentNames(), ElementsAre("third", "second", "first"));
    QWidget* rows = recent().viewport();

    QTest::mousePress(rows, Qt::LeftButton, {}, onTrash(0));
    QTest::mouseRelease(rows, Qt::LeftButton, {}, onRow(0));
    QTest::mouseClick(rows, Qt::RightButton, {}, onRow(0));
    EXPECT_EQ(shown(), "none");
    EXPECT_THAT(fixture.model->scanHistory(), SizeIs(3));

    QTest::mouseClick(rows, Qt::LeftButton, {}, onTrash(0));
    EXPECT_TRUE(test::waitUntil([&] { return recentNames().size() == 2; }));
    // The second press of a double click hits the row that has moved up.
    QTest::mouseEvent(QTest::MouseDClick, rows, Qt::LeftButton, {}, onTrash(0));
    QTest::mouseRelease(rows, Qt::LeftButton, {}, onTrash(0));
    EXPECT_THAT(fixture.model->scanHistory(), SizeIs(2));
    EXPECT_THAT(recentNames(), ElementsAre("second", "first"));
    EXPECT_EQ(shown(), "none");

    scanUntilGate();
    QTest::mouseClick(rows, Qt::LeftButton, {}, onRow(0));
    EXPECT_EQ(shown(), "second");
}

TEST_F(SidebarViewTest, TheKeyboardReachesEveryRecentScan)
{
    constexpr int count = 60;
    for (int i = 0; i < count; ++i) {
        save("scan" + std::to_string(i));
    }
    ASSERT_TRUE(waitForTrees());
    open({200, 300});
    place(3).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&place(3), Qt::Key_Tab);
    ASSERT_TRUE(recent().hasFocus());
    const auto isInSight = [&] {
        const QRect row = recent().visualRect(recent().currentIndex());
        return view->viewport()->rect().contains(QRect(recent().mapTo(view->viewport(), row.topLeft()), row.size()));
    };
    EXPECT_TRUE(test::waitUntil(isInSight));
    QTest::keyClick(&recent(), Qt::Key_End);
    EXPECT_EQ(recent().currentIndex().row(), count - 1);
    EXPECT_TRUE(isInSight());
    EXPECT_EQ(shown(), "none");
    QAccessibleInterface* forReaders = QAccessible::queryAccessibleInterface(&recent());
    EXPECT_EQ(forReaders->childCount(), count);
    EXPECT_TRUE(forReaders->child(count - 1)->text(QAccessible::Name).startsWith(QStringLiteral("scan0, 2 KB, ")));
    QTest::keyClick(&recent(), Qt::Key_Up);
    QTest::keyClick(&recent(), Qt::Key_Return);
    EXPECT_EQ(shown(), "scan1");

    QTest::keyClick(&recent(), Qt::Key_Delete);
    EXPECT_THAT(fixture.model->scanHistory(), SizeIs(count));
    test::choose(*test::openMenu(recent(), QContextMenuEvent::Keyboard), 0);
    EXPECT_TRUE(test::waitUntil([&] { return recent().model()->rowCount() == count - 1; }));
    EXPECT_EQ(recent().currentIndex().data().toString(), QStringLiteral("scan0"));
    EXPECT_EQ(shown(), "scan1");
}

TEST_F(SidebarViewTest, BreaksTheShownTreeDown)
{
    fixture.show("root/\n  b.mov 3000000000\n  a/\n    a.jpg 400\n    b.jpg 600\n  empty.zip 0");
    EXPECT_TRUE(test::waitUntil([&] { return labels().size() > 4; }));
    EXPECT_THAT(labels(), ElementsAre("Devices", "Favorites", "Recent Scans", "No recent scans", "Space Breakdown",
                                      "Images", "1 KB", "Videos", "3 GB"));
    EXPECT_EQ(sizeOfCategory(FileCategory::image, *fixture.model->currentRootNode()), 1000);
    fixture.show("root/\n  empty.zip 0");
    EXPECT_TRUE(test::waitUntil([&] { return labels().size() == 5; }));
    scanUntilGate();
    EXPECT_THAT(labels(), ElementsAre("Devices", "Favorites", "Recent Scans", "No recent scans"));
}

} // namespace
} // namespace morlaine
