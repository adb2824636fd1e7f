#pragma once

#include "Utilities/Color.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace morlaine {

/// The kind of content of a file, judged by its extension alone. A closed set of nine.
class FileCategory {
public:
    enum Case : std::uint8_t { image, video, audio, application, archive, sourceCode, document, system, other };

    /// Every category in declaration order.
    static constexpr std::array<Case, 9> allCases{image,      video,    audio,  application, archive,
                                                  sourceCode, document, system, other};

    constexpr FileCategory() = default;
    constexpr FileCategory(Case value) : m_case(value) {} // NOLINT(google-explicit-constructor): it is that value

    /// The category of an extension (UTF-8, without its full stop) after full Unicode lower-casing; `other` for
    /// the empty and for every unlisted one. Allocates only for an extension outside ASCII. Any thread.
    [[nodiscard]] static FileCategory from(std::string_view ext);

    /// The category of a persisted form; nothing for a text that is none.
    [[nodiscard]] static std::optional<FileCategory> fromRawValue(std::string_view rawValue) noexcept;

    /// The persisted form, such as "sourceCode".
    [[nodiscard]] std::string_view rawValue() const noexcept;

    /// The label for people, such as "Source Code".
    [[nodiscard]] std::string_view displayName() const noexcept;

    /// The fill colour wherever the category is drawn.
    [[nodiscard]] Color color() const noexcept;

    constexpr operator Case() const noexcept { return m_case; } // NOLINT(google-explicit-constructor)

private:
    Case m_case = other;
};

} // namespace morlaine

template <>
struct std::hash<morlaine::FileCategory> {
    [[nodiscard]] std::size_t operator()(morlaine::FileCategory category) const noexcept { return category; }
};
