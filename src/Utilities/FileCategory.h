#pragma once

#include "Utilities/Color.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace morlaine {

/// The kind of content of a file, judged by its extension alone.
class FileCategory {
public:
    enum Case : std::uint8_t { image, video, audio, application, archive, sourceCode, document, system, other };

    /// Every category in declaration order.
    static constexpr std::array<Case, 9> allCases{image,      video,    audio,  application, archive,
                                                  sourceCode, document, system, other};

    constexpr FileCategory() = default;
    constexpr FileCategory(Case value) : m_case(value) {} // NOLINT(google-explicit-constructor): it is that value

    /// The category of an extension (UTF-8, without the full stop) after full Unicode lower-casing; `other` for an
    /// empty or unlisted extension. Allocates for an extension outside ASCII, and on the first call. Any thread.
    [[nodiscard]] static FileCategory from(std::string_view ext);

    /// The category with that persisted form; nothing for an unknown text.
    [[nodiscard]] static std::optional<FileCategory> fromRawValue(std::string_view rawValue) noexcept;

    /// The persisted form, such as "sourceCode".
    [[nodiscard]] std::string_view rawValue() const noexcept;

    /// The label to show, such as "Source Code".
    [[nodiscard]] std::string_view displayName() const noexcept;

    /// The fill colour of the category, wherever it is drawn.
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
