#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morlaine {

/// The path of the user directory `key` (such as XDG_DESKTOP_DIR) according to the content of a `user-dirs.dirs` file,
/// in exact bytes and without trailing slashes. If the file does not mention it, `usualName` in `home`. Nothing if it
/// is the home folder itself, which means that the user has disabled it.
[[nodiscard]] std::optional<std::string> userDirectory(std::string_view configuration, std::string_view key,
                                                       std::string_view usualName, std::string_view home);

} // namespace morlaine
