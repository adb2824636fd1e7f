#include "Utilities/Uuid.h"

#include "Utilities/Hex.h"

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
    if (text.size() != textLength) {
        return std::nullopt;
    }
    Uuid id;
    std::size_t position = 0;
    for (std::uint8_t& byte : id.m_bytes) {
        if (isHyphenPosition(position) && text[position++] != '-') {
            return std::nullopt;
        }
        const int high = hexValue(text[position]);
        const int low = hexValue(text[position + 1]);
        if (high < 0 || low < 0) {
            return std::nullopt;
        }
        byte = static_cast<std::uint8_t>(high * 16 + low);
        position += 2;
    }
    return id;
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
