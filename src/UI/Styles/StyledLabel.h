#pragma once

#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"

#include <QLabel>

#include <functional>
#include <map>

namespace morlaine {

/// A label with a text style and a system colour, which follow the application's font and appearance. Plain text by
/// default.
class StyledLabel final : public QLabel {
    Q_OBJECT

public:
    explicit StyledLabel(TextStyle style, Theme::SystemColor color = Theme::textPrimary, QWidget* parent = nullptr);
    StyledLabel(TextStyle style, QFont::Weight weight, Theme::SystemColor color, QWidget* parent = nullptr);
    StyledLabel(std::function<QFont()> font, Theme::SystemColor color, QWidget* parent = nullptr);

    [[nodiscard]] int heightForWidth(int width) const override;

private:
    /// The heights that layouts asked for. They ask many times for few widths, and each answer lays the text out.
    struct KnownHeights {
        QString text;
        QFont font;
        std::map<int, int> ofWidths;
    };

    void applyFont();
    void applyColor();

    std::function<QFont()> m_styleFont;
    Theme::SystemColor m_color;
    mutable KnownHeights m_heights;
};

} // namespace morlaine
