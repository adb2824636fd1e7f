#pragma once

#include <QColor>

namespace morlaine {

inline constexpr double textContrast = 4.5;

/// The contrast of two opaque colours: 1 (equal) to 21 (black and white). Text needs `textContrast`, large text and
/// symbols need 3.
[[nodiscard]] double contrastRatio(const QColor& first, const QColor& second);

/// `over` blended on `under` at the opacity `share` (0...1); opaque.
[[nodiscard]] QColor mixed(const QColor& over, const QColor& under, double share);

/// `text` blended towards `background` until `share` of it is left, but not below `leastContrast`. Returns `text`
/// itself if even its contrast is lower.
[[nodiscard]] QColor receded(const QColor& text, const QColor& background, double share, double leastContrast);

/// `color` blended towards `text` until its contrast with `background` reaches `leastContrast`.
[[nodiscard]] QColor strengthened(const QColor& color, const QColor& text, const QColor& background,
                                  double leastContrast);

} // namespace morlaine
