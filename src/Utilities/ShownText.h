#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

namespace morlaine {

// File names can contain anything. Every name that is shown goes through one of these functions, so that it cannot
// mislead; opening, copying and comparing use the exact name. Any thread.
//
// A character without a glyph of its own becomes U+FFFD: controls such as line breaks, line and paragraph separators,
// format characters such as those that reverse the direction of text, fillers and noncharacters. So
// "photo<U+202E>gpj.exe" does not read as "photoexe.jpg", and two different names look different.
//
// Three kinds are kept where they change what is seen and writing needs them: joiners between letters that join
// (Persian) or after a virama (Indic scripts), joiners between emoji, and variation selectors behind emoji, ideographs
// and Mongolian letters. Flags spelled with tag characters are not kept: tags can spell any hidden text.
//
// Letters of right-to-left scripts are kept and drawn in the order of their script.

/// `text` as one line without invisible characters.
[[nodiscard]] QString shownText(QStringView text);

/// The same for UTF-8, with U+FFFD for invalid bytes.
[[nodiscard]] QString shownText(std::string_view utf8);

/// The same for a path. If it contains right-to-left letters, a left-to-right mark is inserted behind each slash. This
/// keeps the folders in their order.
[[nodiscard]] QString shownPath(QStringView path);
[[nodiscard]] QString shownPath(std::string_view utf8);

/// The part of `path` that `shownPath(path)` shows as the UTF-16 units from `begin` up to `end`.
[[nodiscard]] QString exactPartOfPath(QStringView path, qsizetype begin, qsizetype end);

} // namespace morlaine
