#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morlaine {

/// The path of the user directory `key` (such as XDG_DESKTOP_DIR) according to the content of a `user-dirs.dirs`, in
/// exact bytes and without trailing slashes; the one called `usualName` in `home` when the content does not name it.
/// Nothing when it is configured as the home folder itself, which is how a user says that there shall be none.
[[nodiscard]] std::optional<std::string> userDirectory(std::string_view configuration, std::string_view key,
                                                       std::string_view usualName, std::string_view home);

} // namespace morlaine
