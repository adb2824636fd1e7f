#pragma once

#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"

#include <QLabel>

#include <functional>

namespace morlaine {

/// A label in a text style and a system colour, both of which it keeps when the application's font or the appearance
/// changes. Plain text unless told otherwise.
class StyledLabel final : public QLabel {
    Q_OBJECT

public:
    explicit StyledLabel(TextStyle style, Theme::SystemColor color = Theme::textPrimary, QWidget* parent = nullptr);
    StyledLabel(TextStyle style, QFont::Weight weight, Theme::SystemColor color, QWidget* parent = nullptr);
    StyledLabel(std::function<QFont()> font, Theme::SystemColor color, QWidget* parent = nullptr);

private:
    void applyFont();
    void applyColor();

    std::function<QFont()> m_styleFont;
    Theme::SystemColor m_color;
};

} // namespace morlaine
