#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

namespace morlaine {

// Names are whatever somebody has made them. Whoever shows one calls one of these functions, so that what is read is
// what is there; opening, copying and comparing go by the exact name. Any thread.
//
// A character without a picture of its own becomes U+FFFD: controls such as line breaks, separators of lines, format
// characters such as those that turn the direction of the text around, fillers and noncharacters. So
// "photo<U+202E>gpj.exe" does not read as "photoexe.jpg", and two names that differ look different.
//
// Three kinds stay, where they change what is seen and writing needs them: joiners between letters that join (Persian
// words) or after a virama (Indic ones), joiners between emoji, and variation selectors behind emoji, ideographs and
// Mongolian letters. Flags that are spelled with tag characters do not stay: tags can spell anything unseen.
//
// Letters that are written from right to left stay as they are, and are drawn in the order of their own writing.

/// `text` as one line without anything invisible.
[[nodiscard]] QString shownText(QStringView text);

/// The same for UTF-8, with U+FFFD for invalid bytes.
[[nodiscard]] QString shownText(std::string_view utf8);

/// The same for a path. Where letters in it run from right to left, a left-to-right mark behind each slash keeps the
/// folders in their order, which would otherwise be turned around.
[[nodiscard]] QString shownPath(QStringView path);
[[nodiscard]] QString shownPath(std::string_view utf8);

/// What stands in `path` where `shownPath(path)` shows the UTF-16 units from `begin` up to `end`.
[[nodiscard]] QString exactPartOfPath(QStringView path, qsizetype begin, qsizetype end);

} // namespace morlaine
