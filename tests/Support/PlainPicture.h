#pragma once

#include "UI/Views/Treemap/TreemapTiles.h"

namespace morlaine::test {

/// The simplest painter of a treemap without labels: one rectangle after another in the order of depths, on every pixel
/// that it touches, rounding only at the end.
[[nodiscard]] QImage plainPicture(const TreemapScene& scene);

} // namespace morlaine::test
