#include "UI/Views/Treemap/TreemapDecisions.h"

#include "Support/ModelFixture.h"
#include "Support/TreeText.h"
#include "UI/Views/Treemap/BreadcrumbFit.h"

#include <gtest/gtest.h>

#include <array>

namespace morlaine {

namespace Decide = TreemapDecisions;

namespace {

TreemapRect file(const char* name)
{
    return {FileNode(FileUrl::fromPath("/f"), name, 1, false, FileCategory::other, std::nullopt), {}, {}, 0};
}

} // namespace

TEST(TreemapDecisionsTest, TellsAboutTheNodeUnderThePointerElseTheSelectedOne)
{
    TreemapRect hovered = file("hovered name");
    hovered.color = {0.25, 0.5, 0.75};
    const FileNode selected(FileUrl::fromPath("/s"), "selected.mp3", 2'000, false, FileCategory::audio, std::nullopt);

    EXPECT_EQ(Decide::infoOf(hovered, selected),
              (Decide::Info{hovered.color, QStringLiteral("hovered name"), QStringLiteral("(1 byte)")}));
    EXPECT_EQ(Decide::infoOf(std::nullopt, selected),
              (Decide::Info{FileCategory(FileCategory::audio).color(), QStringLiteral("selected.mp3"),
                            QStringLiteral("(2 KB)")}));
    EXPECT_EQ(Decide::infoOf(std::nullopt, std::nullopt), std::nullopt);
}

TEST(TreemapDecisionsTest, MovesToTheNearestRectangleInADirection)
{
    const FileNode root = test::treeFromText("root/\n  folder/\n    left 4\n    inner/\n      upper 2\n    lower 1\n"
                                             "  beside 7\n  near 1\n  far 1\n  speck 9\n  thin/\n    end 3\n"
                                             "  below 0\n  last/\n");
    const std::pair<Rect, std::size_t> rects[] = {
        {{0, 0, 100, 100}, 0},  {{3, 3, 60, 94}, 1},    {{63, 3, 34, 40}, 1},   {{66, 6, 28, 34}, 2},
        {{63, 43, 34, 54}, 1},  {{100, 0, 60, 100}, 0}, {{160, 56, 20, 20}, 0}, {{170, 40, 20, 16}, 0},
        {{160, 48, 3, 3}, 0},   {{0, 200, 100, 20}, 0}, {{60, 203, 37, 14}, 1}, {{0, 100, 100, 100}, 0},
        {{100, 100, 60, 60}, 0}};
    TreemapLayout layout;
    layout.restart(root);
    for (Tree::Position node = 1; const auto& [rect, depth] : rects) {
        layout.add(node++, rect, depth);
    }
    using enum Decide::Move;
    const std::tuple<const char*, Decide::Move, const char*> cases[] = {
        {"folder", right, "left"}, {"folder", down, "left"},    {"folder", left, "lower"},
        {"left", right, "lower"},  {"lower", left, "left"},     {"lower", up, "upper"},
        {"left", left, "none"},    {"upper", right, "beside"},  {"beside", right, "far"},
        {"beside", down, "last"},  {"beside", left, "folder"},  {"below", up, "folder"},
        {"below", down, "thin"},   {"thin", right, "end"},      {"last", right, "near"},
        {"last", up, "beside"},    {"left", largest, "folder"}, {"left", smallest, "below"},
        {"none", down, "folder"}};
    for (const auto& [name, move, expected] : cases) {
        const auto from = name == std::string("none") ? std::nullopt : layout.indexOf(test::nodeNamed(root, name));
        const auto to = Decide::destination(layout, from, move);
        EXPECT_EQ(to ? layout[*to].node.name() : "none", expected) << name << static_cast<int>(move);
    }
}

TEST(TreemapDecisionsTest, LabelsWhatIsLargeEnough)
{
    const auto labels = Decide::labelsIn({10, 20, 71, 36});
    ASSERT_TRUE(labels);
    EXPECT_EQ(labels->frame, QRectF(14, 24, 63, 28));
    EXPECT_EQ(labels->name, QPointF(14, 26));
    EXPECT_EQ(labels->size, QPointF(14, 38));
    EXPECT_FALSE(Decide::labelsIn({0, 0, 70, 36}));
    EXPECT_FALSE(Decide::labelsIn({0, 0, 71, 35}));
}

TEST(BreadcrumbFitTest, CutsLongNamesThenFoldsTheMiddle)
{
    // Each step takes 20 besides its name; the minimum of a name is 50; the button for folded steps is 10 wide.
    const BreadcrumbFit::Metrics metrics{16, 4, 50, 10};
    const struct {
        std::vector<int> names;
        int available;
        std::vector<int> widths; // 0 for a folded step
    } cases[] = {
        {{}, 100, {}},
        {{60, 100}, 200, {60, 100}},
        {{60, 100}, 190, {60, 90}},
        {{50, 100}, 141, {50, 51}},
        {{60, 100, 200}, 300, {60, 90, 90}},
        {{60, 100, 100}, 200, {60, 0, 70}}, // 3 x 70 would not fit
        {{60, 30, 80, 70, 100}, 170, {50, 0, 0, 0, 50}},
        {{60, 30, 80, 70, 100}, 169, {0, 0, 0, 0, 100}},
        {{60, 100}, 60, {0, 10}},
        {{60, 100}, 0, {0, 0}},
    };
    for (const auto& [names, available, widths] : cases) {
        EXPECT_EQ(fitBreadcrumb(names, available, metrics).nameWidths, widths) << available;
    }
}

TEST(BreadcrumbFitTest, LeavesTwoFifthsOfTheHeaderToTheInfo)
{
    EXPECT_EQ(naturalBreadcrumbWidth(std::vector{60, 100}, {16, 4, 50, 10}), 200);
    const std::array<int, 5> cases[] = {{1000, 300, 10, 300, 690}, {1000, 900, 10, 590, 400}, {10, 50, 20, 0, 0}};
    for (const auto& [available, natural, spacing, breadcrumb, info] : cases) {
        const HeaderWidths widths = divideHeader(available, natural, spacing);
        EXPECT_EQ(std::pair(widths.breadcrumb, widths.info), std::pair(breadcrumb, info)) << available;
    }
}

} // namespace morlaine
