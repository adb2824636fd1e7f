#pragma once

#include <QFont>

namespace morlaine {

/// The fonts of the views. All are relative to the application's font, which the user chooses: body text has its size.
///
/// Sizes in points are those of a design whose body text is 13 points high. Larger ones keep their proportion to it;
/// smaller ones shrink only two thirds as far, since the application's font is small already on many desktops, and
/// never below 7 points. Fonts do not follow a later change of the application's font by themselves: StyledLabel does,
/// other widgets ask again on `QEvent::ApplicationFontChange`.
///
/// Digits need no help to be equally wide: they are so in all fonts that desktops use by default, and Qt learned to ask
/// a font for such digits only after the version that this program is content with.
enum class TextStyle { largeTitle, title, title3, headline, subheadline, body, caption, caption2 };

namespace TextStyles {

/// The style's font in its own weight: semibold for the headline and the title of a panel (title3), regular for all
/// others.
[[nodiscard]] QFont font(TextStyle style);
[[nodiscard]] QFont font(TextStyle style, QFont::Weight weight);

/// The application's font at `size` points of the design.
[[nodiscard]] QFont systemFont(double size, QFont::Weight weight = QFont::Normal);

/// The application's font exactly `size` logical pixels high, whatever size the user chose: for text inside drawings
/// whose geometry is fixed.
[[nodiscard]] QFont drawingFont(int size, QFont::Weight weight = QFont::Normal);

} // namespace TextStyles

} // namespace morlaine
