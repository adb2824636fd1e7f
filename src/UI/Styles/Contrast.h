#pragma once

#include <QColor>

namespace morlaine {

inline constexpr double textContrast = 4.5;

/// How far two opaque colours are apart for a reader: 1 (the same) to 21 (black and white). Text wants
/// `textContrast`, large text and symbols 3.
[[nodiscard]] double contrastRatio(const QColor& first, const QColor& second);

/// `share` (0...1) of `over` laid on `under`, opaque.
[[nodiscard]] QColor mixed(const QColor& over, const QColor& under, double share);

/// `text` drawn back towards `background` until `share` of it is left, or less far where the contrast with the
/// background would fall below `leastContrast`. The text itself where not even that has so much.
[[nodiscard]] QColor receded(const QColor& text, const QColor& background, double share, double leastContrast);

/// `color` drawn towards `text` as far as it takes for the contrast with `background`.
[[nodiscard]] QColor strengthened(const QColor& color, const QColor& text, const QColor& background,
                                  double leastContrast);

} // namespace morlaine
