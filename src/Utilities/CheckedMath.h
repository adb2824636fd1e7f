#pragma once

#include <cstdint>
#include <cstdlib>

namespace morlaine {

/// The sum of two sizes or counts. A sum beyond 64 bits ends the program without a message: nobody would notice a
/// wrapped total. Any thread.
[[nodiscard]] inline std::int64_t checkedAdd(std::int64_t a, std::int64_t b) noexcept
{
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        std::abort();
    }
    return sum;
}

} // namespace morlaine
