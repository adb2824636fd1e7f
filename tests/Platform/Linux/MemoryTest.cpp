#include "Core/Models/GrowingArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace morlaine {
namespace {

TEST(ResizeBlock, KeepsContentInSmallAndLargePagesAndWhereItMoves)
{
    // Both arrays grow in turns, so that each is in the other's way, from a few bytes to several large pages.
    constexpr std::uint32_t most = 4'000'000;
    GrowingArray<std::uint32_t> up;
    GrowingArray<std::uint64_t> down;
    for (std::uint32_t i = 0; i < most; ++i) {
        up.push_back(i);
        down.push_back(most - i);
    }
    for (const std::size_t size : {most, 3'333'333U, 1'000'001U, 500'000U, 1000U, 2'000'000U}) {
        const std::size_t kept = std::min(size, up.size());
        up.resize(size);
        up.shrinkToFit();
        down.resize(size);
        down.shrinkToFit();
        for (std::uint32_t i = 0; i < kept; ++i) {
            ASSERT_EQ(up[i], i) << size;
            ASSERT_EQ(down[i], most - i) << size;
        }
        up[size - 1] = static_cast<std::uint32_t>(size - 1);
        down[size - 1] = most - size + 1;
    }
    auto reused = GrowingArray<char>::inMemoryOf(std::move(down));
    reused.resize(20'000'000);
    reused[19'999'999] = 'x';
    EXPECT_EQ(up[1], 1U);
}

} // namespace
} // namespace morlaine
