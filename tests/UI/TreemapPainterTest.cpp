#include "UI/Views/TreemapPainter.h"

#include "Services/Search/SearchIndex.h"
#include "Support/TreeText.h"
#include "UI/Styles/Conversions.h"
#include "UI/Views/RectangleFiller.h"

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

TEST(RectangleFillerTest, GivesPartsOfPixelsTheirShare)
{
    QImage image(8, 4, QImage::Format_RGB32);
    image.fill(Qt::black);
    RectangleFiller filler(image, 2);
    filler.fill({0.75, 0.5, 1.75, 0.75}, Qt::white, 1); // pixels 1.5...5 by 1...2.5
    filler.fill({3, -10, 100, 10.5}, Qt::red, 0.5);     // beyond the image
    filler.fill({-5, -5, 2, 2}, Qt::red, 1);
    const std::tuple<int, int, QColor> pixels[] = {
        {0, 1, Qt::black},         {1, 1, QColor(128, 128, 128)}, {2, 1, Qt::white},          {4, 1, Qt::white},
        {5, 1, Qt::black},         {3, 2, QColor(128, 128, 128)}, {1, 2, QColor(64, 64, 64)}, {3, 0, Qt::black},
        {6, 0, QColor(128, 0, 0)}, {7, 0, QColor(128, 0, 0)},     {7, 1, Qt::black},
    };
    for (const auto& [x, y, color] : pixels) {
        EXPECT_TRUE(isNear(image.pixelColor(x, y), color)) << x << ", " << y;
    }
}

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
    const QColor fill = toQColor(color);
    const std::string longName(200, 'W');
    const auto painted = [&](bool isDirectory, const Rect& rect) {
        return paint({{node(longName.c_str(), isDirectory), rect, color, 0}});
    };
    EXPECT_FALSE(hasLabel(painted(false, {10, 10, 70, 60}), {10, 10, 70, 60}, fill));
    EXPECT_FALSE(hasLabel(painted(false, {10, 10, 100, 35}), {10, 10, 100, 35}, fill));
    EXPECT_FALSE(hasLabel(painted(true, {10, 10, 100, 80}), {10, 10, 100, 80}, ground));

    const QImage image = painted(false, {10, 10, 71, 36});
    EXPECT_TRUE(hasLabel(image, {10, 10, 71, 36}, fill));
    for (int y = 12; y < 44; ++y) {
        EXPECT_TRUE(isNear(image.pixelColor(12, y), fill));
        EXPECT_TRUE(isNear(image.pixelColor(78, y), fill)) << y;
        EXPECT_TRUE(isNear(image.pixelColor(90, y), ground)) << y;
    }
}

} // namespace morlaine
