#pragma once

#include "UI/Views/Treemap/TreemapPainter.h"

namespace morlaine::test {

/// The rectangles of a treemap without labels, painted as plainly as it can be said: one after the other in the order
/// of their depths, on every pixel that they touch, without rounding until the end.
[[nodiscard]] QImage plainPicture(const TreemapPainter::Scene& scene);

} // namespace morlaine::test
