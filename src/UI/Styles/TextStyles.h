#pragma once

#include <QFont>

namespace morlaine {

/// The fonts of the views. All are relative to the application's font, which the user chooses; body text has its size.
///
/// Sizes are those of a design whose body text has 13 points. Larger sizes keep their ratio to it. Smaller ones shrink
/// only two thirds as much, since many desktops use a small font already, and never below 7 points. A font does not
/// follow later changes of the application's font: StyledLabel does, other widgets handle
/// `QEvent::ApplicationFontChange`.
///
/// Digits are equally wide in the default fonts of all desktops. Qt 6.4 cannot request such digits.
enum class TextStyle { largeTitle, title, title3, headline, subheadline, body, caption, caption2 };

namespace TextStyles {

/// The font of the style: semibold for the headline and the title of a panel (title3), regular for all others.
[[nodiscard]] QFont font(TextStyle style);
[[nodiscard]] QFont font(TextStyle style, QFont::Weight weight);

/// The application's font at `size` points of the design.
[[nodiscard]] QFont systemFont(double size, QFont::Weight weight = QFont::Normal);

/// The application's font with a height of exactly `size` logical pixels, for text in drawings of fixed geometry.
[[nodiscard]] QFont drawingFont(int size, QFont::Weight weight = QFont::Normal);

} // namespace TextStyles

} // namespace morlaine
