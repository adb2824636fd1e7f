#pragma once

#include <cstdint>
#include <cstdlib>

namespace morlaine {

/// Sum of two sizes or counts. A sum beyond 64 bits ends the program without a message:
/// a wrapped total would be a lie that nobody notices. Any thread.
[[nodiscard]] inline std::int64_t checkedAdd(std::int64_t a, std::int64_t b) noexcept
{
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        std::abort();
    }
    return sum;
}

} // namespace morlaine
