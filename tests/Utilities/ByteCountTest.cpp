#include "Utilities/ByteCount.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace morlaine {
namespace {

TEST(ByteCount, ReadsAsPeopleWriteSizes)
{
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    constexpr std::pair<std::int64_t, const char*> cases[] = {{0, "Zero KB"},
                                                              {1, "1 byte"},
                                                              {999, "999 bytes"},
                                                              {1'499, "1 KB"},
                                                              {1'500, "2 KB"},
                                                              {999'500, "1 MB"},
                                                              {999'999, "1 MB"},
                                                              {1'049'999, "1 MB"},
                                                              {1'050'000, "1.1 MB"},
                                                              {1'234'567, "1.2 MB"},
                                                              {999'949'999, "999.9 MB"},
                                                              {999'950'000, "1 GB"},
                                                              {1'005'000'000, "1.01 GB"},
                                                              {1'050'000'000, "1.05 GB"},
                                                              {1'100'000'000, "1.1 GB"},
                                                              {1'234'567'890, "1.23 GB"},
                                                              {999'995'000'000, "1 TB"},
                                                              {999'999'999'999'999, "1 PB"},
                                                              {most, "9.22 EB"},
                                                              {-1, "-1 byte"},
                                                              {-1'234'567, "-1.2 MB"},
                                                              {-most - 1, "-9.22 EB"}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(byteCountText(bytes), text) << bytes;
    }
}

} // namespace
} // namespace morlaine
