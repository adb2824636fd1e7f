#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace morlaine {

/// Whether the bytes are well-formed UTF-8. Quickest for ASCII. Any thread.
[[nodiscard]] bool isValidUtf8(std::string_view bytes) noexcept;

/// The text that the bytes are, with U+FFFD for what is not UTF-8. U+FEFF at the start is a character like any other.
/// Any thread.
[[nodiscard]] QString textOfUtf8(std::string_view bytes);

/// The same as UTF-8. Any thread.
[[nodiscard]] std::string validUtf8(std::string_view bytes);

} // namespace morlaine
