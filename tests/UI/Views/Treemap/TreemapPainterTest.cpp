#include "UI/Views/Treemap/TreemapPainter.h"

#include "Services/Search/SearchIndex.h"
#include "Support/TreeText.h"
#include "UI/Styles/Conversions.h"
#include "UI/Views/Treemap/RectangleFiller.h"

#include <gtest/gtest.h>

#include <cmath>

namespace morlaine {

namespace {

const QColor ground(40, 40, 40);

FileNode node(const char* name, bool isDirectory)
{
    return {FileUrl::fromPath("/n"), name, 1'000, isDirectory, FileCategory::other, std::nullopt};
}

QImage paint(const std::vector<TreemapRect>& rects, double ratio = 1, const NodeIDSet& highlightIDs = {})
{
    return TreemapPainter::paintBase({rects, highlightIDs, ground, {200, 100}, ratio}).toImage();
}

/// `share` of `over` laid on `under`.
QColor mix(const QColor& over, const QColor& under, double share)
{
    const auto channel = [share](int a, int b) { return static_cast<int>(std::lround(a * share + b * (1 - share))); };
    return {channel(over.red(), under.red()), channel(over.green(), under.green()), channel(over.blue(), under.blue())};
}

/// Rounding may differ by a little.
testing::AssertionResult isNear(const QColor& actual, const QColor& expected, int tolerance = 2)
{
    const int distance = std::max({std::abs(actual.red() - expected.red()), std::abs(actual.green() - expected.green()),
                                   std::abs(actual.blue() - expected.blue())});
    return (distance <= tolerance ? testing::AssertionSuccess() : testing::AssertionFailure())
           << actual.name().toStdString() << " for " << expected.name().toStdString();
}

/// Whether anything but the fill is seen inside the outline.
bool hasLabel(const QImage& image, const QRect& rect, const QColor& fill)
{
    for (int y = rect.top() + 2; y < rect.bottom() - 2; ++y) {
        for (int x = rect.left() + 2; x < rect.right() - 2; ++x) {
            if (!isNear(image.pixelColor(x, y), fill)) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

TEST(RectangleFillerTest, StrokesWhatLiesWithinHalfTheWidthOfAnEdge)
{
    const Rect rect{4.3, 5.6, 18.1, 8.7};
    const auto shareOfPixel = [&rect](int x, int y, double width) {
        constexpr int steps = 40;
        const QRectF edge = toQRectF(rect);
        const double half = width / 2;
        const QRectF outer = edge.adjusted(-half, -half, half, half);
        const QRectF inner = edge.adjusted(half, half, -half, -half);
        int covered = 0;
        for (int row = 0; row < steps; ++row) {
            for (int column = 0; column < steps; ++column) {
                const QPointF point(x + (column + 0.5) / steps, y + (row + 0.5) / steps);
                covered += outer.contains(point) && !(rect.height > width && inner.contains(point));
            }
        }
        return static_cast<double>(covered) / (steps * steps);
    };
    for (const double width : {2.0, 1.5, 0.5, 9.0}) {
        QImage image(30, 24, QImage::Format_RGB32);
        image.fill(ground);
        RectangleFiller(image, 1).stroke(rect, Qt::white, 0.3, width);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                ASSERT_TRUE(isNear(image.pixelColor(x, y), mix(Qt::white, ground, 0.3 * shareOfPixel(x, y, width)), 3))
                    << x << ", " << y << " width " << width;
            }
        }
    }
}

TEST(TreemapPainterTest, FillsFilesAndOutlinesFolders)
{
    const Color color{0.2, 0.6, 0.4};
    const std::vector<TreemapRect> rects{
        {node("deep", false), {60, 20, 20, 20}, color, 2}, // comes first, but lies above
        {node("folder", true), {20, 10, 160, 80}, {1, 0, 0}, 0},
        {node("wide", false), {50, 15, 40, 40}, {1, 1, 0}, 1},
    };
    for (const double ratio : {1.0, 2.0}) {
        const QImage image = paint(rects, ratio);
        EXPECT_EQ(image.size(), QSize(200, 100) * ratio);
        const auto at = [&image, ratio](double x, double y) {
            return image.pixelColor(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
        };
        EXPECT_TRUE(isNear(at(5, 5), ground));
        EXPECT_TRUE(isNear(at(70, 30), toQColor(color)));
        EXPECT_TRUE(isNear(at(55, 20), toQColor({1, 1, 0})));
        EXPECT_TRUE(isNear(at(30, 50), ground)) << "a folder is not filled";
        EXPECT_TRUE(isNear(at(20, 50), mix(Qt::white, ground, 0.3)));
        EXPECT_TRUE(isNear(at(19, 50), mix(Qt::white, ground, 0.3)));
        EXPECT_TRUE(isNear(at(17.5, 50), ground));
        EXPECT_TRUE(isNear(at(22, 50), ground));
    }
}

TEST(TreemapPainterTest, DimsFilesThatASearchHasNotFound)
{
    const FileNode root = test::treeFromText("root/\n  hit 10\n  other 10\n  folder/\n    nothing 5\n");
    const NodeIDSet ids(SearchIndex(root).search(QStringLiteral("hit"), std::nullopt, std::nullopt, std::nullopt));
    ASSERT_FALSE(ids.empty());
    const Color color{0.9, 0.5, 0.1};
    const auto children = root.childrenOrNone();
    const std::vector<TreemapRect> rects{{children[0], {0, 0, 50, 30}, color, 0},
                                         {children[1], {50, 0, 50, 30}, color, 0},
                                         {children[2], {100, 0, 50, 50}, color, 0}};

    const QImage searched = paint(rects, 1, ids);
    EXPECT_TRUE(isNear(searched.pixelColor(20, 20), toQColor(color)));
    EXPECT_TRUE(isNear(searched.pixelColor(70, 20), mix(toQColor(color), ground, 0.15)));
    EXPECT_TRUE(isNear(paint(rects).pixelColor(70, 20), toQColor(color)));
    EXPECT_TRUE(isNear(searched.pixelColor(149, 25), mix(Qt::white, ground, 0.3)));
}

TEST(TreemapPainterTest, LabelsLargeFilesWithinTheirEdges)
{
    const Color color{0.1, 0.1, 0.5};
    const std::string longName(200, 'W');
    for (const auto& [width, height, isLabelled] : {std::tuple(70, 60, false), {100, 35, false}, {71, 36, true}}) {
        const QRect rect(10, 10, width, height);
        const QImage image = paint({{node(longName.c_str(), false), {10, 10, width * 1.0, height * 1.0}, color, 0}});
        EXPECT_EQ(hasLabel(image, rect, toQColor(color)), isLabelled) << width;
        EXPECT_FALSE(hasLabel(image, {rect.right() - 4, 10, 7, height}, toQColor(color))) << "at the edge";
        EXPECT_FALSE(hasLabel(image, {rect.right() + 2, 10, 20, height}, ground)) << "beyond it";
    }
}

} // namespace morlaine
