#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace morlaine {

/// A 128-bit identifier. A default-constructed value is all zero and identifies nothing.
class Uuid {
public:
    static constexpr std::size_t textLength = 36;
    using Text = std::array<char, textLength>;

    constexpr Uuid() = default;
    constexpr explicit Uuid(const std::array<std::uint8_t, 16>& bytes) : m_bytes(bytes) {}

    /// A fresh random value (version 4). Each thread has its own generator, seeded once from the operating system, so
    /// that a value costs no system call. Any thread.
    [[nodiscard]] static Uuid random();

    /// Reads the canonical form, 8-4-4-4-12 hexadecimal digits of either case; nothing for any other text.
    [[nodiscard]] static std::optional<Uuid> fromText(std::string_view text) noexcept;

    /// The canonical form in upper case.
    [[nodiscard]] Text text() const noexcept;
    [[nodiscard]] std::string toString() const;

    [[nodiscard]] constexpr const std::array<std::uint8_t, 16>& bytes() const noexcept { return m_bytes; }

    friend constexpr bool operator==(const Uuid&, const Uuid&) = default;

private:
    std::array<std::uint8_t, 16> m_bytes{};
};

} // namespace morlaine

template <>
struct std::hash<morlaine::Uuid> {
    [[nodiscard]] std::size_t operator()(const morlaine::Uuid& id) const noexcept;
};
