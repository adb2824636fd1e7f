#include "Utilities/RelativeDate.h"

#include <gtest/gtest.h>

#include <limits>

namespace morlaine {
namespace {

using namespace std::chrono;

Date at(sys_seconds moment)
{
    return {static_cast<double>((moment - sys_seconds(sys_days(2001y / January / 1))).count())};
}

TEST(RelativeDate, ShowsTheLargestUnitThatIsWhole)
{
    const auto noon = [](sys_days day) { return day + 12h; };
    const sys_seconds now = noon(2024y / March / 31);
    const std::pair<sys_seconds, const char*> cases[] = {{now, "0 sec. ago"},
                                                         {now - 1s, "1 sec. ago"},
                                                         {now - 59s, "59 sec. ago"},
                                                         {now - 60s, "1 min. ago"},
                                                         {now - 1h + 1s, "59 min. ago"},
                                                         {now - 2h, "2 hr. ago"},
                                                         {now - 24h + 1s, "23 hr. ago"},
                                                         {now - 24h, "1 day ago"},
                                                         {now - days(6), "6 days ago"},
                                                         {now - days(7), "1 wk. ago"},
                                                         {noon(2024y / March / 1), "4 wk. ago"},
                                                         {noon(2024y / February / 29), "1 mo. ago"},
                                                         {noon(2023y / March / 31) + 1s, "11 mo. ago"},
                                                         {noon(2023y / March / 31), "1 yr. ago"},
                                                         {sys_days(2001y / January / 1), "23 yr. ago"},
                                                         {now + 5min, "in 5 min."},
                                                         {now + days(31), "in 1 mo."}};
    for (const auto& [date, text] : cases) {
        EXPECT_EQ(formatDate(at(date), at(now)), text);
    }
}

TEST(RelativeDate, SplitsNoSecondsAndSurvivesAnyNumber)
{
    EXPECT_EQ(formatDate({100.9}, {100.1}), "0 sec. ago");
    EXPECT_EQ(formatDate({100.9}, {102}), "1 sec. ago");
    EXPECT_EQ(formatDate({-1e300}, {0}), "6,337 yr. ago");
    EXPECT_EQ(formatDate({std::numeric_limits<double>::max()}, {0}), "in 6,337 yr.");
}

TEST(RelativeDate, CountsMonthsFromTheEndOfLongOnesToTheEndOfShortOnes)
{
    const sys_seconds lastOfJanuary = sys_days(2023y / January / 31);
    EXPECT_EQ(formatDate(at(lastOfJanuary), at(sys_days(2023y / February / 28))), "1 mo. ago");
    EXPECT_EQ(formatDate(at(lastOfJanuary), at(sys_days(2023y / February / 28) - 1s)), "3 wk. ago");
}

} // namespace
} // namespace morlaine
