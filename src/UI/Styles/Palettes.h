#pragma once

#include <QPalette>

namespace morlaine::Palettes {

// The palettes for desktops without one, with every role in every group.

[[nodiscard]] QPalette light();
[[nodiscard]] QPalette dark();

} // namespace morlaine::Palettes
