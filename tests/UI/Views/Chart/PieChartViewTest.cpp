#include "UI/Views/Chart/PieChartView.h"

#include "Support/ModelFixture.h"
#include "Support/TreeText.h"
#include "Support/Widgets.h"
#include "UI/Styles/Conversions.h"
#include "UI/Views/Chart/DonutChart.h"
#include "UI/Views/Chart/DonutSliceShape.h"

#include <QHelpEvent>
#include <QLabel>
#include <QToolTip>

#include <gmock/gmock.h>

#include <numbers>

namespace morlaine {
namespace {

using test::treeFromText;
using testing::Contains;
using testing::Not;

constexpr auto halfImages =
    "root/\n  a.jpg 4000\n  inner/\n    b.mp4 2000\n    c.mp3 1000\n    d.zip 1000\n  e.txt 0\n";

TEST(PieSlice, LeavesTheRingOpenForBytesWithoutACategory)
{
    const FileNode larger(FileUrl::fromPath("/l"), "l", 2000, true, FileCategory::other,
                          std::vector{treeFromText("a.jpg 500")});
    ASSERT_EQ(computeSlices(larger).size(), 1U);
    EXPECT_NEAR(computeSlices(larger)[0].startAngle, -std::numbers::pi / 2, 1e-9);
    EXPECT_NEAR(computeSlices(larger)[0].endAngle, 0, 1e-9);
}

TEST(PieSlice, ListsFiveInTheLegendAndSumsTheOthers)
{
    const auto textOf = [](const char* tree) {
        const FileNode root = treeFromText(tree);
        std::string text;
        for (const LegendRow& row : legendRows(computeSlices(root), root.size())) {
            text += row.name.toStdString() + ' ' + row.percentage.toStdString() + "; ";
        }
        return text;
    };
    EXPECT_EQ(textOf("r/\n  a.jpg 200\n  b.mp4 500\n  c.mp3 100\n  d.zip 100\n  e.cpp 100\n"),
              "Videos 50.0%; Images 20.0%; Audio 10.0%; Archives 10.0%; Source Code 10.0%; ");
    EXPECT_EQ(textOf("r/\n  a.jpg 500\n  b.mp4 200\n  c.mp3 125\n  d.zip 100\n  e.cpp 45\n  f.pdf 20\n  g 10\n"),
              "Images 50.0%; Videos 20.0%; Audio 12.5%; Archives 10.0%; Source Code 4.5%; Other Types 3.0%; ");
    EXPECT_EQ(textOf("r/\n  a.jpg 1\n"), "Images 100.0%; ");
}

TEST(DonutSliceShape, IsASectorOfARing)
{
    const std::tuple<DonutSliceShape, QPointF, bool> cases[] = {
        {{0, 3, 10}, {50, 95}, true},   {{0, 3, 10}, {50, 5}, false},   {{0, 3, 10}, {50, 80}, false},
        {{0, 3, 80}, {52, 60}, true},   {{2, 9, 10}, {50, 95}, true},   {{2, 9, 10}, {95, 50}, true},
        {{2, 8.2, 10}, {27, 89}, true}, {{0, 3, 10}, {105, 50}, false}, {{0, 3, 10}, {90, 75}, true}};
    for (const auto& [shape, point, isInside] : cases) {
        EXPECT_EQ(shape.path({0, 0, 120, 100}).contains(point + QPointF(10, 0)), isInside)
            << point.x() << ", " << point.y();
    }
}

class PieChartViewTest : public testing::Test, protected test::ModelFixture {
protected:
    PieChartViewTest()
    {
        view.resize(320, 200);
        view.show();
        EXPECT_TRUE(test::waitUntilExposed(&view));
    }

    [[nodiscard]] std::vector<std::string> texts() const { return test::labelsIn(view); }

    [[nodiscard]] bool waitForText(const char* text) const
    {
        return test::waitUntil([&] { return std::ranges::count(texts(), text) == 1; });
    }

    [[nodiscard]] QString tipAt(const QPoint& place)
    {
        QHelpEvent event(QEvent::ToolTip, place, donut().mapToGlobal(place));
        QCoreApplication::sendEvent(&donut(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }

    [[nodiscard]] DonutChart& donut() const { return *view.findChild<DonutChart*>(); }

    PieChartView view{*model};
};

TEST_F(PieChartViewTest, ShowsTheWholeScanWhereverTheTreemapIs)
{
    EXPECT_THAT(texts(), Contains("No scan data available"));
    show(halfImages);
    ASSERT_TRUE(waitForText("Images"));
    EXPECT_THAT(texts(), testing::IsSupersetOf({"Storage by File Type", "50.0%", "25.0%"}));
    EXPECT_THAT(texts(), Not(Contains("No scan data available")));
    EXPECT_EQ(donut().accessibleDescription(),
              QStringLiteral("Total Size: 8 KB; Images: 4 KB, 50.0%; Videos: 2 KB, 25.0%; Audio: 1 KB, 12.5%; "
                             "Archives: 1 KB, 12.5%"));
    const auto before = texts();
    model->zoomIn(test::nodeNamed(*model->currentRootNode(), "inner"));
    QCoreApplication::processEvents();
    EXPECT_EQ(texts(), before);
    show("root/\n  a.jpg 0\n");
    EXPECT_TRUE(waitForText("No scan data available"));
}

TEST_F(PieChartViewTest, ALegendThatIsTooHighKeepsTheHeightOfItsRows)
{
    view.hide();
    view.resize(320, 90);
    show(halfImages);
    QCoreApplication::processEvents();
    view.show();
    ASSERT_TRUE(waitForText("Images"));
    for (const auto* label : view.findChildren<QLabel*>()) {
        EXPECT_TRUE(label->isHidden() || label->height() >= label->minimumSizeHint().height())
            << label->text().toStdString();
    }
}

TEST_F(PieChartViewTest, PaintsAndNamesTheSliceUnderThePointer)
{
    show(halfImages);
    ASSERT_TRUE(waitForText("Images"));
    ASSERT_TRUE(test::waitUntil([this] { return donut().size() == QSize(130, 130); }));
    const QPoint right(118, 65);
    const QPoint lowerLeft(30, 100);
    const QImage picture = donut().grab().toImage();
    EXPECT_EQ(picture.pixel(right), toQColor(FileCategory(FileCategory::image).color()).rgb());
    EXPECT_EQ(picture.pixel(lowerLeft), toQColor(FileCategory(FileCategory::video).color()).rgb());

    EXPECT_EQ(tipAt(right), QStringLiteral("Images: 4 KB"));
    QTest::mouseMove(&donut(), lowerLeft);
    EXPECT_TRUE(test::waitUntil([] { return QToolTip::text() == QStringLiteral("Videos: 2 KB"); }));
    for (const QPoint outside : {QPoint(65, 65), QPoint(2, 2), QPoint(65, 30)}) {
        EXPECT_EQ(donut().sliceAt(outside), nullptr) << outside.x();
    }
    EXPECT_TRUE(test::waitUntil([this] { return tipAt({65, 65}).isEmpty(); }));
}

} // namespace
} // namespace morlaine
