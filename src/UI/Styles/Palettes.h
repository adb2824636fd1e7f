#pragma once

#include <QPalette>

namespace morlaine::Palettes {

// The palettes for desktops without one, with every role in every group.

[[nodiscard]] QPalette light();
[[nodiscard]] QPalette dark();

/// `palette` with new colours for the hints and disabled texts that can hardly be seen on their grounds. Some desktops
/// choose dark colours and leave these black.
[[nodiscard]] QPalette withVisibleTexts(QPalette palette);

} // namespace morlaine::Palettes
