#include "UI/Styles/StyledLabel.h"

#include <QApplication>
#include <QEvent>

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
    applyFont();
    applyColor();
}

void StyledLabel::applyFont()
{
    setFont(m_styleFont());
}

void StyledLabel::applyColor()
{
    // Its own palette holds the receded colour already, so that it asks the application for the one to start from.
    const QPalette source = QApplication::palette(this);
    QPalette own;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QPalette resolved = source;
        resolved.setCurrentColorGroup(group);
        own.setColor(group, QPalette::WindowText, m_color(resolved));
    }
    setPalette(own);
}

bool StyledLabel::event(QEvent* event)
{
    const bool isHandled = QLabel::event(event);
    if (event->type() == QEvent::ApplicationFontChange) {
        applyFont();
    } else if (event->type() == QEvent::ApplicationPaletteChange) {
        applyColor();
    }
    return isHandled;
}

} // namespace morlaine
