#include "UI/Views/Treemap/TreemapDecisions.h"

#include "Support/TreeText.h"
#include "UI/Views/Treemap/BreadcrumbFit.h"

#include <gtest/gtest.h>

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

} // namespace morlaine
