#pragma once

#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"

#include <QLabel>

#include <functional>

namespace morlaine {

/// A label with a text style and a system colour, which follow the application's font and appearance. Plain text by
/// default.
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
