#include "Utilities/Uuid.h"

#include "Utilities/Hex.h"
#include "Utilities/SixteenBytes.h"

#include <array>
#include <bit>
#include <cstring>
#include <random>

namespace morlaine {

namespace {

constexpr bool isHyphenPosition(std::size_t position)
{
    return position == 8 || position == 13 || position == 18 || position == 23;
}

/// Unsigned, so that arithmetic may wrap.
using Digits = std::uint8_t __attribute__((vector_size(16)));

constexpr std::uint8_t noDigit = 0xFF;

/// The value of each hexadecimal digit, of either case; `noDigit` for any other character.
Digits valuesOfDigits(const char* characters) noexcept
{
    Digits text;
    std::memcpy(&text, characters, sizeof text);
    const Digits number = text - '0';
    const Digits letter = (text | ('a' - 'A')) - 'a';
    return number < 10 ? number : letter < 6 ? letter + 10 : Digits{} + noDigit;
}

/// xoshiro256**: as random as ids need to be, in a few cycles.
class Generator {
public:
    Generator()
    {
        std::random_device device;
        for (std::uint64_t& word : m_state) {
            word = std::uint64_t{device()} << 32U | device();
        }
        m_state[0] |= 1; // all zeros would stay so
    }
    [[nodiscard]] std::uint64_t operator()() noexcept
    {
        const std::uint64_t result = std::rotl(m_state[1] * 5, 7) * 9;
        const std::uint64_t shifted = m_state[1] << 17U;
        m_state[2] ^= m_state[0];
        m_state[3] ^= m_state[1];
        m_state[1] ^= m_state[2];
        m_state[0] ^= m_state[3];
        m_state[2] ^= shifted;
        m_state[3] = std::rotl(m_state[3], 45);
        return result;
    }

private:
    std::array<std::uint64_t, 4> m_state{};
};

} // namespace

Uuid Uuid::random()
{
    thread_local Generator generator;
    const std::array<std::uint64_t, 2> words{generator(), generator()};
    Uuid id;
    std::memcpy(id.m_bytes.data(), words.data(), id.m_bytes.size());
    id.m_bytes[6] = static_cast<std::uint8_t>((id.m_bytes[6] & 0x0F) | 0x40);
    id.m_bytes[8] = static_cast<std::uint8_t>((id.m_bytes[8] & 0x3F) | 0x80);
    return id;
}

std::optional<Uuid> Uuid::fromText(std::string_view text) noexcept
{
    if (text.size() != textLength || text[8] != '-' || text[13] != '-' || text[18] != '-' || text[23] != '-') {
        return std::nullopt;
    }
    std::array<char, 32> digits;
    std::memcpy(digits.data(), text.data(), 8);
    std::memcpy(digits.data() + 8, text.data() + 9, 4);
    std::memcpy(digits.data() + 12, text.data() + 14, 4);
    std::memcpy(digits.data() + 16, text.data() + 19, 4);
    std::memcpy(digits.data() + 20, text.data() + 24, 12);
    const Digits front = valuesOfDigits(digits.data());
    const Digits back = valuesOfDigits(digits.data() + 16);
    if (SixteenBytes::firstSet((front | back) > 15) != SixteenBytes::count) {
        return std::nullopt;
    }
    const Digits high = __builtin_shufflevector(front, back, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    const Digits low = __builtin_shufflevector(front, back, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
    return Uuid(std::bit_cast<std::array<std::uint8_t, 16>>(high << 4 | low));
}

Uuid::Text Uuid::text() const noexcept
{
    Text text;
    std::size_t position = 0;
    for (const std::uint8_t byte : m_bytes) {
        if (isHyphenPosition(position)) {
            text[position++] = '-';
        }
        text[position++] = hexDigit(byte >> 4);
        text[position++] = hexDigit(byte & 0x0F);
    }
    return text;
}

std::string Uuid::toString() const
{
    const Text characters = text();
    return {characters.data(), characters.size()};
}

} // namespace morlaine

std::size_t std::hash<morlaine::Uuid>::operator()(const morlaine::Uuid& id) const noexcept
{
    // Ids are random, but ids read from a file need not be: both halves are mixed.
    std::array<std::uint64_t, 2> words{};
    std::memcpy(words.data(), id.bytes().data(), id.bytes().size());
    return static_cast<std::size_t>((words[0] ^ (words[1] * 0x9E3779B97F4A7C15U)) * 0xBF58476D1CE4E5B9U);
}
