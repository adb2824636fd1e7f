#include "Core/Treemap/TreemapEngine.h"

#include "Support/PlainTreemap.h"
#include "Support/SmallStack.h"
#include "Support/TreeText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <random>
#include <sstream>
#include <string>

namespace morlaine {
namespace {

using test::treeFromText;
using TreemapEngine::computeLayout;

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr Rect window{0, 0, 1600, 1000};

FileNode fileOf(std::int64_t size)
{
    static const FileUrl folder = FileUrl::fromPath("/f");
    return {folder, "x", size, false, FileCategory::allCases[static_cast<std::size_t>(size) % 9], std::nullopt};
}

/// A folder of the size of its largest child, so that the sum of the children does not matter.
FileNode folderOf(std::vector<FileNode> children)
{
    std::int64_t size = 0;
    for (const FileNode& child : children) {
        size = std::max(size, child.size());
    }
    return {FileUrl::fromPath("/f"), "f", size, true, FileCategory::other, std::move(children)};
}

FileNode folderOfSizes(const std::vector<std::int64_t>& sizes)
{
    std::vector<FileNode> files;
    std::ranges::transform(sizes, std::back_inserter(files), fileOf);
    return folderOf(std::move(files));
}

/// A line for each rectangle: two spaces per level, the name, x, y, width, height.
std::string textOf(const std::vector<TreemapRect>& layout)
{
    std::ostringstream text;
    for (const TreemapRect& item : layout) {
        const Rect& r = item.rect;
        text << std::string(static_cast<std::size_t>(2 * item.depth), ' ') << item.node.name() << ' ' << r.x << ' '
             << r.y << ' ' << r.width << ' ' << r.height << '\n';
    }
    return text.str();
}

TEST(TreemapEngine, DividesARectangleAmongChildren)
{
    constexpr const char* two = "r/\n  a 1\n  b 1";
    constexpr const char* nested = "r/\n  d/\n    a 1\n    b 1";
    const std::tuple<const char*, Rect, const char*> cases[] = {
        {two, {0, 0, 200, 100}, "a 0 0 100 100\nb 100 0 100 100\n"},
        {two, {0, 0, 100, 200}, "a 0 0 100 100\nb 0 100 100 100\n"},
        {two, {0, 0, 100, 100}, "a 0 0 100 50\nb 0 50 100 50\n"}, // a tie adds to the row
        {two, {-7, 40, 200, 100}, "a -7 40 100 100\nb 93 40 100 100\n"},
        {"r/\n  a 3\n  b 2\n  c 1", {0, 0, 600, 100}, "a 0 0 300 100\nb 300 0 200 100\nc 500 0 100 100\n"},
        {"r/\n  c 1\n  a 3\n  b 2", {0, 0, 600, 100}, "c 0 0 100 100\na 100 0 300 100\nb 400 0 200 100\n"},
        {"r/\n  a 1\n  b 1\n  c 1\n  d 1",
         {0, 0, 100, 150},
         "a 0 0 50 75\nb 50 0 50 75\nc 0 75 50 75\nd 50 75 50 75\n"},
        {"r/\n  o 0\n  a 1\n  o/\n  b 1\n  o!", {0, 0, 200, 100}, "a 0 0 100 100\nb 100 0 100 100\n"},
        {"r/\n  a 1", {1, 2, 3, 4}, "a 1 2 3 4\n"},
        {nested, {0, 0, 106, 56}, "d 0 0 106 56\n  a 3 3 50 50\n  b 53 3 50 50\n"},
        {nested, {0, 0, 18, 100}, "d 0 0 18 100\n"},
        {nested, {0, 0, 100, 18}, "d 0 0 100 18\n"},
        {nested, {0, 0, 30, 18.25}, "d 0 0 30 18.25\n  a 3 3 12 12.25\n  b 15 3 12 12.25\n"},
        {"r/\n  d/\n    a 2\n  b 2", {0, 0, 200, 100}, "d 0 0 100 100\n  a 3 3 94 94\nb 100 0 100 100\n"},
        {"r/\n  a 4611686018427387904\n  b 1\n  c 1", {0, 0, 9, 8}, "a 0 0 9 8\n"}, // no room is left
        {two, {0, 0, 0, 100}, ""},
        {two, {0, 0, 100, 0}, ""},
        {two, {0, 0, -100, 100}, ""},
        {two, {0, 0, 100, -100}, ""},
        {two, {0, 0, nan, 100}, ""},
        {two, {0, 0, 100, nan}, ""},
        {"a 1", window, ""},
        {"r/", window, ""},
        {"r!", window, ""},
        {"r/\n  a 0\n  d/", window, ""},
    };
    for (const auto& [tree, rect, text] : cases) {
        EXPECT_EQ(textOf(computeLayout(treeFromText(tree), rect)), text) << tree << rect.width;
    }
}

TEST(TreemapEngine, StopsAtTheDeepestLevel)
{
    const std::tuple<std::int64_t, std::int64_t, std::vector<std::int64_t>> cases[] = {
        {4, 0, {0, 1, 2, 3, 4}},
        {0, 0, {0}},
        {-1, 0, {0}},
        {4, 3, {3, 4}},
        {4, 9, {9}},
        {largest, 0, {0, 1, 2, 3, 4, 5, 6, 7}},
        {4, -1, {-1, 0, 1, 2, 3, 4}},
        {largest, largest, {largest}}};
    const FileNode chain = test::chainOfFolders(8);
    for (const auto& [maxDepth, currentDepth, expected] : cases) {
        std::vector<std::int64_t> depths;
        for (const TreemapRect& item : computeLayout(chain, window, maxDepth, currentDepth)) {
            depths.push_back(item.depth);
        }
        EXPECT_EQ(depths, expected);
    }
    EXPECT_EQ(computeLayout(chain, window).size(), 5U);
}

TEST(TreemapEngine, WorksAtAnyDepthWithASmallStack)
{
    std::vector<TreemapRect> layout;
    test::runWithSmallStack([&] { layout = computeLayout(test::chainOfFolders(10'000), {0, 0, 1e6, 1e6}, largest); });
    ASSERT_EQ(layout.size(), 10'000U);
    EXPECT_EQ(layout.back().rect, (Rect{29'997, 29'997, 940'006, 940'006}));
}

TEST(TreemapEngine, EndsTheProgramWhereSizesOverflow)
{
    const FileNode tooMuch = folderOfSizes({largest - 1, 1, -1, 1});
    const FileNode nested = folderOf({tooMuch});
    EXPECT_EXIT((void)computeLayout(tooMuch, window), testing::KilledBySignal(SIGABRT), "^$");
    EXPECT_EXIT((void)computeLayout(nested, window), testing::KilledBySignal(SIGABRT), "^$");
    EXPECT_EQ(computeLayout(tooMuch, {0, 0, 0, 1}).size(), 0U) << "nothing is summed for a rectangle without area";
    EXPECT_EQ(computeLayout(nested, {0, 0, 18, 18}).size(), 1U) << "nor for a folder without room";
    EXPECT_EQ(computeLayout(folderOfSizes({largest - 1, 1, -1, 0}), window).size(), 1U);
}

/// Unusual trees and rectangles, the same in each run.
class Dice {
public:
    [[nodiscard]] std::int64_t below(std::int64_t limit)
    {
        return static_cast<std::int64_t>(m_generator() % static_cast<std::uint64_t>(limit));
    }
    [[nodiscard]] double between(double low, double high)
    {
        return low + (high - low) * static_cast<double>(m_generator()) / 0x1p64;
    }
    [[nodiscard]] std::int64_t upTo(double bits) { return static_cast<std::int64_t>(std::exp2(between(0, bits))); }

    [[nodiscard]] std::vector<std::int64_t> sizes(std::int64_t count)
    {
        const std::int64_t kind = below(6);
        std::vector<std::int64_t> sizes;
        for (std::int64_t i = 0; i < count; ++i) {
            switch (kind) {
            case 0:
                sizes.push_back(7);
                break;
            case 1: // one giant
                sizes.push_back(i == 0 ? largest / 2 : 1 + below(3));
                break;
            case 2: // as large as a sum allows
                sizes.push_back(largest / count - below(1000));
                break;
            case 3: // halves of halves
                sizes.push_back(largest >> std::min<std::int64_t>(i + 1, 62));
                break;
            default: // all magnitudes, unsorted, some without a rectangle
                sizes.push_back(upTo(50) - below(20));
            }
        }
        return sizes;
    }

    [[nodiscard]] Rect rect()
    {
        const double width = length();
        const double height = below(2) == 0 ? length() : width * std::exp2(between(-3, 3));
        return {below(8) == 0 ? length() : 0, below(8) == 0 ? -length() : 0, width, height};
    }

    [[nodiscard]] FileNode tree(int levels)
    {
        std::vector<FileNode> children;
        for (std::int64_t count = below(9); count > 0; --count) {
            children.push_back(levels > 0 && below(2) == 0 ? tree(levels - 1) : fileOf(upTo(20)));
        }
        return folderOf(std::move(children));
    }

private:
    /// Ordinary ones, the limits of the range, and magnitudes whose squares or fourth powers are out of range.
    [[nodiscard]] double length()
    {
        static constexpr double ends[] = {5e-324, 1e-308, 1e-162, 18, 1600, 1e154, 1e308, infinity, nan};
        switch (below(5)) {
        case 0:
            return ends[below(std::ssize(ends))];
        case 1:
            return std::pow(10, between(-83, -80));
        case 2:
            return std::pow(10, between(76, 78));
        case 3:
            return std::pow(10, between(-170, 160));
        default:
            return between(1, 2000);
        }
    }

    std::mt19937_64 m_generator{20'010'101};
};

bool isSame(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

bool isSame(const TreemapRect& a, const TreemapRect& b)
{
    return a.node == b.node && a.color == b.color && a.depth == b.depth && isSame(a.rect.x, b.rect.x) &&
           isSame(a.rect.y, b.rect.y) && isSame(a.rect.width, b.rect.width) && isSame(a.rect.height, b.rect.height);
}

/// Compares the layout with the plain one, to the last bit.
void expectPlainLayout(const FileNode& node, const Rect& rect, std::int64_t maxDepth)
{
    const auto layout = computeLayout(node, rect, maxDepth);
    const auto plain = test::plainLayout(node, rect, maxDepth, 0);
    const auto [one, other] =
        std::ranges::mismatch(layout, plain, [](const TreemapRect& a, const TreemapRect& b) { return isSame(a, b); });
    EXPECT_TRUE(one == layout.end() && other == plain.end())
        << rect.width << " x " << rect.height << " differs at " << one - layout.begin() << " of " << plain.size();
}

TEST(TreemapEngine, IsThePlainLayoutToTheLastBit)
{
    Dice dice;
    for (int round = 0; round < 6'000 && !testing::Test::HasFailure(); ++round) {
        expectPlainLayout(folderOfSizes(dice.sizes(1 + dice.below(60))), dice.rect(), 4);
    }
    for (int round = 0; round < 600 && !testing::Test::HasFailure(); ++round) {
        expectPlainLayout(dice.tree(6), round % 2 == 0 ? window : dice.rect(), dice.below(7));
    }
    for (const Rect& rect : {window, Rect{0, 0, 1e7, 1}, Rect{0, 0, 1, 1e7}}) {
        for (const std::int64_t giant : {std::int64_t{1}, std::int64_t{3'000}, largest / 2}) {
            std::vector<std::int64_t> sizes(3'000, 1);
            sizes.front() = giant;
            expectPlainLayout(folderOfSizes(sizes), rect, 4);
        }
    }
}

TEST(TreemapEngine, KeepsUpWithAGiantAndAMillionDwarfs)
{
    std::vector<std::int64_t> sizes(1'000'001, 1);
    sizes.front() = 1'000'000;
    EXPECT_EQ(computeLayout(folderOfSizes(sizes), window).size(), sizes.size());
}

} // namespace
} // namespace morlaine
