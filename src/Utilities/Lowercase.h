#pragma once

#include <string>
#include <string_view>

namespace morlaine {

/// Appends `text` (UTF-8) in lower case by the full rules of Unicode, those of no language in particular: a letter may
/// become several. A sigma at the end of a word becomes the same as elsewhere, since what ends a search text may go on
/// in a name. Quickest for ASCII. Any thread.
void appendLowercased(std::string_view text, std::string& result);

/// The same as a text of its own.
[[nodiscard]] std::string lowercased(std::string_view text);

} // namespace morlaine
