#pragma once

#include <QColor>
#include <QLinearGradient>
#include <QPalette>

/// The colours, the gradient, the spacings and the corner radii that the views share. Colours of file categories belong
/// to FileCategory.
namespace morlaine::Theme {

/// A colour that follows the appearance: it is asked for at the moment of use, with the palette of the widget that
/// uses it, whose current group (active, inactive, disabled) counts.
using SystemColor = QColor (*)(const QPalette& palette);

[[nodiscard]] QColor panelBackground(const QPalette& palette);   // behind panels and headers
[[nodiscard]] QColor controlBackground(const QPalette& palette); // behind lists and fields
[[nodiscard]] QColor textPrimary(const QPalette& palette);
[[nodiscard]] QColor textSecondary(const QPalette& palette);    // recedes
[[nodiscard]] QColor textTertiary(const QPalette& palette);     // recedes as far as text on a panel may
[[nodiscard]] QColor quietPicture(const QPalette& palette);     // recedes behind the text that it stands above
[[nodiscard]] QColor textOfCancelling(const QPalette& palette); // a red for the toolbar, also while pressed
[[nodiscard]] QColor mutedSelection(const QPalette& palette);   // behind a list's selected row without the focus
[[nodiscard]] QColor buttonText(const QPalette& palette);
[[nodiscard]] QColor separator(const QPalette& palette); // hairlines between panels

// The standard colours stand on light and dark alike and do not follow the appearance.
inline constexpr QColor blue{10, 108, 245};
inline constexpr QColor purple{155, 81, 224};
inline constexpr QColor pink{240, 72, 128};
inline constexpr QColor red{222, 56, 58};
inline constexpr QColor green{36, 154, 72};
inline constexpr QColor yellow{238, 174, 10};
inline constexpr QColor grey{138, 143, 152};

inline constexpr QColor accent = blue;
inline constexpr QColor progressBackground{10, 108, 245, 38}; // the blue at opacity 0.15

/// Blue, purple and pink, evenly spaced from the top leading to the bottom trailing corner of whatever it fills.
[[nodiscard]] QLinearGradient scanGradient();

/// How much of the text colour lies on the ground of a flat button under the pointer, and of one held down.
inline constexpr double hoverOpacity = 0.08;
inline constexpr double pressedOpacity = 0.14;

// Points.
inline constexpr double paddingSmall = 8;
inline constexpr double paddingMedium = 16;
inline constexpr double paddingLarge = 24;
inline constexpr double cornerRadiusSmall = 6;
inline constexpr double cornerRadiusMedium = 12;
inline constexpr double cornerRadiusLarge = 18;

/// `color` at `opacity` (0...1).
[[nodiscard]] QColor withOpacity(const QColor& color, double opacity);

} // namespace morlaine::Theme
