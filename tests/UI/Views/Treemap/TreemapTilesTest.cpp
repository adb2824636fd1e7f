#include "UI/Views/Treemap/TreemapTiles.h"

#include "Core/Treemap/TreemapEngine.h"
#include "Services/Search/SearchIndex.h"
#include "Support/PlainPicture.h"
#include "Support/TreeText.h"
#include "Support/Widgets.h"
#include "UI/Styles/Contrast.h"
#include "UI/Styles/Conversions.h"
#include "UI/Views/Treemap/FolderGrounds.h"
#include "UI/Views/Treemap/TreemapCanvas.h"
#include "UI/Views/Treemap/TreemapLabels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace morlaine {

namespace {

const QColor ground(40, 40, 40);

/// Allows for small rounding differences.
testing::AssertionResult isNear(const QColor& actual, const QColor& expected, int tolerance = 2)
{
    const int distance = std::max({std::abs(actual.red() - expected.red()), std::abs(actual.green() - expected.green()),
                                   std::abs(actual.blue() - expected.blue())});
    return (distance <= tolerance ? testing::AssertionSuccess() : testing::AssertionFailure())
           << actual.name().toStdString() << " for " << expected.name().toStdString();
}

/// A tile a turn.
QImage paintedInTurns(const TreemapScene& scene)
{
    const auto tiles = TreemapTiles::start(scene);
    std::optional<QImage> image;
    while (!image) {
        image = tiles->paint([] { return true; });
    }
    return *image;
}

QImage labelledPicture(const TreemapScene& scene)
{
    QImage image = TreemapTiles::start(scene)->paint().value();
    TreemapLabels::paint(image, *scene.layout);
    return image;
}

/// Whether a pixel inside the outline differs from the fill.
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

/// The text of files of all magnitudes in nested folders, `levels` deep.
std::string randomTree(std::mt19937& generator, int levels, const std::string& indent = "  ")
{
    static constexpr const char* extensions[] = {"jpg", "mp4", "mp3", "zip", "cpp", "pdf", "x"};
    std::string text;
    for (auto count = generator() % 12 + 1; count > 0; --count) {
        const std::string name = std::to_string(count);
        if (levels > 0 && generator() % 3 == 0) {
            text += indent + "d" + name + "/\n" + randomTree(generator, levels - 1, indent + "  ");
        } else {
            const auto size = static_cast<std::int64_t>(std::exp2(generator() % 20));
            text += indent + name + "." + extensions[generator() % 7] + " " + std::to_string(size) + "\n";
        }
    }
    return text;
}

/// A folder of many files that are much smaller than a pixel, beside a large file.
std::string dust()
{
    std::string text = "  d/\n";
    for (int index = 0; index < 60'000; ++index) {
        text += "    " + std::to_string(index) + (index % 2 == 0 ? ".mp3 1\n" : ".jpg 1\n");
    }
    return text + "  big.pdf 3000\n";
}

/// The largest difference of any channel of any pixel, and the mean over all channels.
std::pair<int, double> distance(const QImage& a, const QImage& b)
{
    int largest = 0;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb one = a.pixel(x, y);
            const QRgb other = b.pixel(x, y);
            for (const int channel :
                 {qRed(one) - qRed(other), qGreen(one) - qGreen(other), qBlue(one) - qBlue(other)}) {
                largest = std::max(largest, std::abs(channel));
                sum += std::abs(channel);
            }
        }
    }
    return {largest, sum / (3.0 * a.width() * a.height())};
}

/// A canvas whose pixel ratio the test sets.
class CanvasOnAnyScreen final : public TreemapCanvas {
public:
    int scale = 1;

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        return metric == PdmDevicePixelRatioScaled ? static_cast<int>(scale * devicePixelRatioFScale())
                                                   : TreemapCanvas::metric(metric);
    }
};

} // namespace

TEST(TreemapTilesTest, IsThePlainPicture)
{
    std::mt19937 generator(20'010'101);
    std::vector<FileNode> roots{test::scan(FileUrl::fromPath("/usr/include")), test::treeFromText("root/\n" + dust())};
    for (int round = 0; round < 8; ++round) {
        roots.push_back(test::treeFromText("root/\n" + randomTree(generator, 5)));
    }
    for (const FileNode& root : roots) {
        const NodeIDSet hits(SearchIndex(root).search(QStringLiteral("1"), std::nullopt, std::nullopt, std::nullopt));
        for (const double ratio : {0.5, 1.0, 1.25, 2.0}) {
            const QSize size(static_cast<int>(80 + generator() % 300), static_cast<int>(40 + generator() % 200));
            const auto layout = std::make_shared<TreemapLayout>();
            TreemapEngine::layOut(root, {0, 0, size.width() * 1.0, size.height() + 0.4}, *layout);
            ASSERT_FALSE(layout->empty());
            for (const NodeIDSet& highlighted : {NodeIDSet(), hits}) {
                const TreemapScene scene{layout, highlighted, ground,
                                         size,   ratio,       std::make_shared<const FolderGrounds>(*layout)};
                const QImage image = TreemapTiles::start(scene)->paint().value();
                ASSERT_EQ(paintedInTurns(scene), image);
                const QImage plain = test::plainPicture(scene);
                ASSERT_EQ(image.size(), plain.size());
                const auto [largest, mean] = distance(image, plain);
                ASSERT_LE(largest, 2) << test::textOfTree(root).substr(0, 500) << ratio << " " << size.width();
                ASSERT_LE(mean, 0.1) << "where nothing is rounded down";
            }
        }
    }
}

TEST(TreemapLabelsTest, LabelsLargeFilesWithinTheirEdges)
{
    const QColor color = toQColor(FileCategory(FileCategory::other).color());
    const FileNode root = test::treeFromText("root/\n  " + std::string(200, 'W') + " 1\n");
    for (const auto& [width, height, isLabelled] : {std::tuple(70, 60, false), {100, 35, false}, {71, 36, true}}) {
        const QRect rect(10, 10, width, height);
        const auto layout = std::make_shared<TreemapLayout>();
        TreemapEngine::layOut(root, {10, 10, width * 1.0, height * 1.0}, *layout);
        const QImage image = labelledPicture({layout, {}, ground, {200, 100}, 1});
        EXPECT_EQ(hasLabel(image, rect, color), isLabelled) << width;
        EXPECT_FALSE(hasLabel(image, {rect.right() - 4, 10, 7, height}, color)) << "at the edge";
        EXPECT_FALSE(hasLabel(image, {rect.right() + 2, 10, 20, height}, ground)) << "beyond it";
    }
}

/// The letters, however thin, against what lies beside them.
TEST(TreemapLabelsTest, LabelsAreReadOnEveryColour)
{
    for (const std::string extension : {"png", "mkv", "mp3", "exe", "zip", "cpp", "pdf", "db", "x"}) {
        const FileNode root = test::treeFromText("root/\n  HHHHHHHHHH." + extension + " 1\n");
        const auto layout = std::make_shared<TreemapLayout>();
        TreemapEngine::layOut(root, {0, 0, 90, 40}, *layout);
        for (const double ratio : {1.0, 2.0}) {
            const QImage image = labelledPicture({layout, {}, ground, {90, 40}, ratio});
            for (const auto& [top, bottom] : {std::pair(6, 16), {19, 27}}) { // the name, the size
                double best = 0;
                for (int y = qRound(top * ratio); y < bottom * ratio; ++y) {
                    for (int x = qRound(5 * ratio); x < 30 * ratio; ++x) {
                        best = std::max(best, contrastRatio(image.pixelColor(x, y), image.pixelColor(x - 1, y)));
                    }
                }
                EXPECT_GE(best, 3) << extension << " " << ratio << " " << top;
            }
        }
    }
}

TEST(TreemapCanvasTest, PaintsAgainForAnotherPixelRatio)
{
    CanvasOnAnyScreen canvas;
    const auto layout = std::make_shared<TreemapLayout>();
    TreemapEngine::layOut(test::treeFromText("root/\n  a 1"), {0, 0, 100, 100}, *layout);
    canvas.showLayout(layout, {});
    canvas.show();
    ASSERT_TRUE(test::waitUntilExposed(&canvas));
    canvas.grab();
    const int before = canvas.basePaintCount();
    canvas.grab();
    EXPECT_EQ(canvas.basePaintCount(), before);
    canvas.scale = 2;
    canvas.grab();
    EXPECT_EQ(canvas.basePaintCount(), before + 1);
}

} // namespace morlaine
