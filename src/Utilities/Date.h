#pragma once

#include <chrono>
#include <compare>

namespace morlaine {

/// A moment: seconds, with fraction, since 2001-01-01 00:00:00 UTC. Negative before that.
struct Date {
    double secondsSince2001 = 0;

    [[nodiscard]] static Date now()
    {
        using namespace std::chrono;
        constexpr sys_days reference = year(2001) / January / 1;
        return {duration<double>(system_clock::now() - reference).count()};
    }

    friend constexpr auto operator<=>(const Date&, const Date&) = default;
};

} // namespace morlaine
