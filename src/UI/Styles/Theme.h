#pragma once

#include <QColor>
#include <QLinearGradient>
#include <QPalette>

/// The colours, gradient, spacings and corner radii that the views share. FileCategory has the colours of categories.
namespace morlaine::Theme {

/// A colour that depends on the appearance. Call it at the moment of use with the widget's palette; the palette's
/// current group (active, inactive, disabled) counts.
using SystemColor = QColor (*)(const QPalette& palette);

[[nodiscard]] QColor panelBackground(const QPalette& palette);   // of panels and headers
[[nodiscard]] QColor controlBackground(const QPalette& palette); // of lists and fields
[[nodiscard]] QColor textPrimary(const QPalette& palette);
[[nodiscard]] QColor textSecondary(const QPalette& palette);    // less prominent
[[nodiscard]] QColor textTertiary(const QPalette& palette);     // as little prominent as text on a panel may be
[[nodiscard]] QColor quietPicture(const QPalette& palette);     // less prominent than the text below it
[[nodiscard]] QColor textOfCancelling(const QPalette& palette); // a red for the toolbar, also while pressed
[[nodiscard]] QColor mutedSelection(const QPalette& palette);   // a selected row of a list without the focus
[[nodiscard]] QColor buttonText(const QPalette& palette);
[[nodiscard]] QColor separator(const QPalette& palette); // hairlines between panels

// The standard colours are used on light and dark alike and do not follow the appearance.
inline constexpr QColor blue{10, 108, 245};
inline constexpr QColor purple{155, 81, 224};
inline constexpr QColor pink{240, 72, 128};
inline constexpr QColor red{222, 56, 58};
inline constexpr QColor green{36, 154, 72};
inline constexpr QColor yellow{238, 174, 10};
inline constexpr QColor grey{138, 143, 152};

inline constexpr QColor accent = blue;
inline constexpr QColor progressBackground{10, 108, 245, 38}; // blue at opacity 0.15

/// Blue, purple and pink, evenly spaced from the top leading to the bottom trailing corner of the filled shape.
[[nodiscard]] QLinearGradient scanGradient();

/// The opacity of the text colour on a flat button under the pointer, and on a pressed one.
inline constexpr double hoverOpacity = 0.08;
inline constexpr double pressedOpacity = 0.14;

// In points.
inline constexpr double paddingSmall = 8;
inline constexpr double paddingMedium = 16;
inline constexpr double paddingLarge = 24;
inline constexpr double cornerRadiusSmall = 6;
inline constexpr double cornerRadiusMedium = 12;
inline constexpr double cornerRadiusLarge = 18;

/// `color` with `opacity` (0...1).
[[nodiscard]] QColor withOpacity(const QColor& color, double opacity);

} // namespace morlaine::Theme
