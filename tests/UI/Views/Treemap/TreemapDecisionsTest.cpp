#include "UI/Views/Treemap/TreemapDecisions.h"

#include "Support/TreeText.h"
#include "UI/Views/Treemap/BreadcrumbFit.h"

#include <gtest/gtest.h>

#include <utility>

namespace morlaine {

namespace Decide = TreemapDecisions;

namespace {

TreemapRect file(const char* name, const Rect& rect, std::int64_t depth = 0)
{
    return {FileNode(FileUrl::fromPath("/f"), name, 1, false, FileCategory::other, std::nullopt), rect, {}, depth};
}

TreemapRect folder(const char* name, const Rect& rect, std::int64_t depth = 0)
{
    return {FileNode(FileUrl::fromPath("/d"), name, 1, true, FileCategory::other, std::nullopt), rect, {}, depth};
}

std::string nameAt(std::span<const TreemapRect> rects, const QPointF& point)
{
    const auto position = Decide::hitTest(rects, point);
    return position ? std::string(rects[*position].node.name()) : "nothing";
}

} // namespace

TEST(TreemapDecisionsTest, FindsTheFileElseTheOutermostFolder)
{
    const std::vector<TreemapRect> rects{
        folder("outer", {0, 0, 100, 100}),      folder("inner", {3, 3, 94, 94}, 1),
        folder("empty", {6, 6, 40, 88}, 2),     file("first", {46, 6, 48, 40}, 2),
        file("second", {46, 46, 48, 48.25}, 2), file("overlapping", {46, 46, 48, 48}, 2),
    };
    const std::pair<QPointF, const char*> cases[] = {
        {{1, 1}, "outer"},       {{4, 4}, "outer"},      {{20, 20}, "outer"},     {{50, 20}, "first"},
        {{46, 6}, "first"},      {{50, 46}, "second"},   {{50, 45.999}, "first"}, {{94, 50}, "outer"},
        {{93.99, 50}, "second"}, {{0, 0}, "outer"},      {{100, 50}, "nothing"},  {{50, 100}, "nothing"},
        {{-0.1, 5}, "nothing"},  {{50, 94.25}, "outer"},
    };
    for (const auto& [point, name] : cases) {
        EXPECT_EQ(nameAt(rects, point), name) << point.x() << ", " << point.y();
    }
    EXPECT_EQ(Decide::positionOf(rects, rects[3].id()), 3U);
    EXPECT_EQ(Decide::positionOf(rects, Uuid::random()), std::nullopt);
}

TEST(TreemapDecisionsTest, TellsAboutTheNodeUnderThePointerElseTheSelectedOne)
{
    TreemapRect hovered = file("hovered name", {});
    hovered.color = {0.25, 0.5, 0.75};
    const FileNode selected(FileUrl::fromPath("/s"), "selected.mp3", 2'000, false, FileCategory::audio, std::nullopt);

    EXPECT_EQ(Decide::infoOf(hovered, selected),
              (Decide::Info{hovered.color, QStringLiteral("hovered name"), QStringLiteral("(1 byte)")}));
    EXPECT_EQ(Decide::infoOf(std::nullopt, selected),
              (Decide::Info{FileCategory(FileCategory::audio).color(), QStringLiteral("selected.mp3"),
                            QStringLiteral("(2 KB)")}));
    EXPECT_EQ(Decide::infoOf(std::nullopt, std::nullopt), std::nullopt);
}

TEST(BreadcrumbFitTest, CutsLongNamesThenFoldsTheMiddle)
{
    // Each step takes 20 besides its name; a name keeps 50; the button for folded steps is 10 wide.
    const BreadcrumbFit::Metrics metrics{16, 4, 50, 10};
    const struct {
        std::vector<int> names;
        int available;
        std::vector<int> widths; // 0 where folded
    } cases[] = {
        {{}, 100, {}},
        {{60, 100}, 200, {60, 100}},
        {{60, 100}, 190, {60, 90}},
        {{60, 100, 200}, 300, {60, 90, 90}},
        {{60, 100, 100}, 200, {60, 0, 70}}, // 3 x 70 would be too much
        {{60, 30, 80, 70, 100}, 170, {50, 0, 0, 0, 50}},
        {{60, 30, 80, 70, 100}, 169, {0, 0, 0, 0, 100}},
        {{60, 100}, 60, {0, 10}},
        {{60, 100}, 0, {0, 0}},
    };
    for (const auto& [names, available, widths] : cases) {
        EXPECT_EQ(fitBreadcrumb(names, available, metrics).nameWidths, widths) << available;
    }
}

} // namespace morlaine
