#include "Core/Models/CategorySizes.h"

#include "Support/SmallStack.h"
#include "Support/TreeText.h"

#include <gtest/gtest.h>

#include <csignal>
#include <limits>

namespace morlaine {
namespace {

using test::treeFromText;

FileNode node(std::int64_t size, bool isDirectory, FileCategory category, std::optional<std::vector<FileNode>> children)
{
    return {FileUrl::fromPath("/n"), "n", size, isDirectory, category, std::move(children)};
}

TEST(CategorySizes, SumsFilesOfEveryDepthAndNothingElse)
{
    const CategorySizes sizes = categorySizes(
        treeFromText("root/\n  a.jpg 100\n  inner/\n    b.PNG 20\n    c.mp3 7\n    unread!\n    deeper/\n      d 3\n"));
    EXPECT_EQ(sizes, (CategorySizes{120, 0, 7, 0, 0, 0, 0, 0, 3}));
    EXPECT_EQ(categorySizes(treeFromText("lonely.zip 5")), (CategorySizes{0, 0, 0, 0, 5, 0, 0, 0, 0}));
    EXPECT_EQ(categorySizes(node(9, true, FileCategory::image, std::nullopt)), CategorySizes{});

    const FileNode fileWithList = node(4, false, FileCategory::video, std::vector{treeFromText("x.jpg 100")});
    EXPECT_EQ(categorySizes(node(4, true, FileCategory::other, std::vector{fileWithList})),
              (CategorySizes{0, 4, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(CategorySizes, NeedsNoMoreStackForADeeperTree)
{
    const FileNode root = test::chainOfFolders(10'000);
    CategorySizes sizes{};
    test::runWithSmallStack([&] { sizes = categorySizes(root); });
    EXPECT_EQ(sizes[FileCategory::document], root.size());
}

TEST(CategorySizesDeathTest, EndsTheProgramWhenASumOverflows)
{
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    const FileNode root = node(0, true, FileCategory::other,
                               std::vector{node(largest, false, FileCategory::image, std::nullopt),
                                           node(1, false, FileCategory::image, std::nullopt),
                                           node(1, false, FileCategory::image, std::nullopt)});
    EXPECT_EXIT((void)categorySizes(root), testing::KilledBySignal(SIGABRT), "^$");
}

} // namespace
} // namespace morlaine
