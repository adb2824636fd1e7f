#pragma once

#include "Core/Models/GrowingArray.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace morlaine {

/// Which text of a block holds the byte at `offset`. `starts` tells where each begins, and at last where the block
/// ends. It is the text `from` or a later one, as a rule not far behind it.
[[nodiscard]] inline std::size_t textAt(const GrowingArray<std::uint32_t>& starts, std::size_t offset,
                                        std::size_t from) noexcept
{
    constexpr int near = 8; // texts that are looked at one by one
    for (int i = 0; i < near; ++i, ++from) {
        if (from + 1 == starts.size() || starts[from + 1] > offset) {
            return from;
        }
    }
    std::size_t step = 1;
    for (; from + step < starts.size() && starts[from + step] <= offset; step *= 2) {
        from += step;
    }
    const std::uint32_t* const end = starts.begin() + std::min(from + step, starts.size());
    return static_cast<std::size_t>(std::upper_bound(starts.begin() + from, end, offset) - starts.begin() - 1);
}

} // namespace morlaine
