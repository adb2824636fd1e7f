#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Sixteen bytes of a text at once. A comparison gives -1 in each byte for true and 0 for false.
namespace morlaine::SixteenBytes {

using Bytes = signed char __attribute__((vector_size(16)));

inline constexpr int count = sizeof(Bytes);

/// The sixteen bytes at `place`, which must all be readable.
[[nodiscard]] inline Bytes at(const char* place) noexcept
{
    Bytes bytes;
    std::memcpy(&bytes, place, sizeof bytes);
    return bytes;
}

/// Sixteen copies of a byte.
[[nodiscard]] inline Bytes of(char byte) noexcept
{
    return Bytes{} + static_cast<signed char>(byte);
}

/// The index of the first byte for which a comparison was true; `count` if there is none.
[[nodiscard]] inline int firstSet(Bytes comparison) noexcept
{
#if defined(__SSE2__)
    const int bits = _mm_movemask_epi8(reinterpret_cast<__m128i>(comparison));
    return bits != 0 ? std::countr_zero(static_cast<unsigned>(bits)) : count;
#else
    const auto [front, back] = std::bit_cast<std::array<std::uint64_t, 2>>(comparison);
    const auto firstOf = [](std::uint64_t word) { // 8 where it is 0
        return (std::endian::native == std::endian::little ? std::countr_zero(word) : std::countl_zero(word)) / 8;
    };
    return front != 0 ? firstOf(front) : 8 + firstOf(back);
#endif
}

} // namespace morlaine::SixteenBytes
