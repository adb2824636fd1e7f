#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace morlaine {

/// Whether the bytes are well-formed UTF-8. Fastest for ASCII. Any thread.
[[nodiscard]] bool isValidUtf8(std::string_view bytes) noexcept;

/// Decodes UTF-8, with U+FFFD for invalid bytes. U+FEFF at the start is kept as a character. Any thread.
[[nodiscard]] QString textOfUtf8(std::string_view bytes);

/// The bytes as valid UTF-8, with U+FFFD for invalid ones. Any thread.
[[nodiscard]] std::string validUtf8(std::string_view bytes);

} // namespace morlaine
