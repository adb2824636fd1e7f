#pragma once

#include <string>
#include <string_view>

namespace morlaine {

/// Appends `text` (UTF-8) in lower case by the full Unicode rules of no particular language: one letter may become
/// several. A sigma at the end of a word is treated like any other, since the end of a search text may be the middle of
/// a name. Fastest for ASCII. Any thread.
void appendLowercased(std::string_view text, std::string& result);

/// Returns `text` in lower case.
[[nodiscard]] std::string lowercased(std::string_view text);

} // namespace morlaine
