#include "UI/Styles/StyledLabel.h"

#include "UI/Styles/ApplicationLook.h"
#include "UI/Styles/LeadingEdge.h"

#include <QApplication>

namespace morlaine {

StyledLabel::StyledLabel(TextStyle style, Theme::SystemColor color, QWidget* parent)
    : StyledLabel([style] { return TextStyles::font(style); }, color, parent)
{
}

StyledLabel::StyledLabel(TextStyle style, QFont::Weight weight, Theme::SystemColor color, QWidget* parent)
    : StyledLabel([style, weight] { return TextStyles::font(style, weight); }, color, parent)
{
}

StyledLabel::StyledLabel(std::function<QFont()> font, Theme::SystemColor color, QWidget* parent)
    : QLabel(parent)
    , m_styleFont(std::move(font))
    , m_color(color)
{
    setTextFormat(Qt::PlainText);
    setAlignment(leadingEdge() | Qt::AlignVCenter);
    applyFont();
    applyColor();
    connect(&ApplicationLook::shared(), &ApplicationLook::fontChanged, this, &StyledLabel::applyFont);
    connect(&ApplicationLook::shared(), &ApplicationLook::paletteChanged, this, &StyledLabel::applyColor);
}

int StyledLabel::heightForWidth(int width) const
{
    if (m_heights.text != text() || m_heights.font != font()) {
        m_heights = {text(), font(), {}};
    }
    const auto [place, isNew] = m_heights.ofWidths.try_emplace(width);
    if (isNew) {
        place->second = QLabel::heightForWidth(width);
    }
    return place->second;
}

void StyledLabel::applyFont()
{
    setFont(m_styleFont());
}

void StyledLabel::applyColor()
{
    // Starts from the application's palette: the label's own palette already has the receded colour.
    const QPalette source = QApplication::palette(this);
    QPalette own;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QPalette resolved = source;
        resolved.setCurrentColorGroup(group);
        own.setColor(group, QPalette::WindowText, m_color(resolved));
    }
    setPalette(own);
}

} // namespace morlaine
