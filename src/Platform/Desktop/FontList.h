#pragma once

#include <future>

namespace morlaine {

/// Starts to read the desktop's list of fonts on another thread. Qt reads it when it first measures text, unless it has
/// been read, and that takes about as long as connecting to the display. Any thread. The result is ready when the list
/// has been read, also if that failed. Until then the environment must not change: the list depends on it.
[[nodiscard]] std::future<void> readFontList();

} // namespace morlaine
