#include "UI/Styles/Palettes.h"

#include "UI/Styles/Contrast.h"
#include "UI/Styles/Theme.h"

namespace morlaine::Palettes {

namespace {

/// The colours in which the two palettes differ; all other roles are derived from them.
struct Tints {
    QColor window;
    QColor base;
    QColor alternateBase;
    QColor button;
    QColor text;
    QColor toolTip;
    QColor link;
    QColor linkVisited;
};

constexpr Tints lightTints{
    .window = {246, 246, 248},
    .base = {255, 255, 255},
    .alternateBase = {249, 249, 251},
    .button = {255, 255, 255},
    .text = {29, 29, 33},
    .toolTip = {255, 255, 255},
    .link = {10, 95, 220},
    .linkVisited = {118, 66, 178},
};

constexpr Tints darkTints{
    .window = {31, 32, 36},
    .base = {24, 25, 28},
    .alternateBase = {28, 29, 33},
    .button = {54, 56, 63},
    .text = {236, 236, 240},
    .toolTip = {46, 48, 54},
    .link = {110, 170, 255},
    .linkVisited = {196, 156, 240},
};

void setBackgrounds(QPalette& palette, const Tints& tints)
{
    palette.setColor(QPalette::Window, tints.window);
    palette.setColor(QPalette::Base, tints.base);
    palette.setColor(QPalette::AlternateBase, tints.alternateBase);
    palette.setColor(QPalette::Button, tints.button);
    palette.setColor(QPalette::ToolTipBase, tints.toolTip);
    palette.setColor(QPalette::Highlight, Theme::accent);
}

/// The shades for bevels and frames.
void setShades(QPalette& palette, const Tints& tints)
{
    palette.setColor(QPalette::Light, mixed(Qt::white, tints.button, 0.12));
    palette.setColor(QPalette::Midlight, mixed(Qt::white, tints.button, 0.06));
    palette.setColor(QPalette::Mid, mixed(tints.text, tints.window, 0.18));
    palette.setColor(QPalette::Dark, mixed(tints.text, tints.window, 0.32));
    palette.setColor(QPalette::Shadow, mixed(Qt::black, tints.window, 0.6));
}

void setTexts(QPalette& palette, const Tints& tints)
{
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, tints.text);
    }
    palette.setColor(QPalette::PlaceholderText, receded(tints.text, tints.base, 0.5, textContrast));
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, tints.link);
    palette.setColor(QPalette::LinkVisited, tints.linkVisited);
}

/// The window colour is the background that is closest to the text colour.
void setDisabledTexts(QPalette& palette, const Tints& tints)
{
    const auto fade = [&](QPalette::ColorRole role, const QColor& text) {
        palette.setColor(QPalette::Disabled, role, receded(text, tints.window, 0.34, textContrast));
    };
    fade(QPalette::WindowText, tints.text);
    fade(QPalette::Text, tints.text);
    fade(QPalette::PlaceholderText, tints.text);
    fade(QPalette::Link, tints.link);
    fade(QPalette::LinkVisited, tints.linkVisited);
    // Flat buttons lie on the window, others on their own background.
    const QColor button = mixed(tints.button, tints.window, 0.4);
    palette.setColor(QPalette::Disabled, QPalette::Button, button);
    palette.setColor(
        QPalette::Disabled, QPalette::ButtonText,
        strengthened(palette.color(QPalette::Disabled, QPalette::WindowText), tints.text, button, textContrast));
    palette.setColor(QPalette::Disabled, QPalette::Highlight,
                     strengthened(mixed(tints.text, tints.window, 0.45), Qt::black, Qt::white, textContrast));
}

QPalette paletteOf(const Tints& tints)
{
    QPalette palette;
    setBackgrounds(palette, tints);
    setShades(palette, tints);
    setTexts(palette, tints);
    setDisabledTexts(palette, tints);
    return palette;
}

struct TextOnGround {
    QPalette::ColorRole text;
    QPalette::ColorRole ground;
};

/// Replaces a colour that is nearly its ground by a fainter shade of `text`.
void makeVisible(QPalette& palette, QPalette::ColorGroup group, TextOnGround pair, const QColor& text)
{
    constexpr double hardlyVisible = 1.6;
    constexpr double share = 0.5;
    constexpr double leastContrast = 3;
    const QColor ground = palette.color(group, pair.ground);
    const QColor color = palette.color(group, pair.text);
    if (contrastRatio(mixed(color, ground, color.alphaF()), ground) < hardlyVisible) {
        palette.setColor(group, pair.text, receded(text, ground, share, leastContrast));
    }
}

} // namespace

QPalette light()
{
    return paletteOf(lightTints);
}

QPalette dark()
{
    return paletteOf(darkTints);
}

QPalette withVisibleTexts(QPalette palette)
{
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        makeVisible(palette, group, {QPalette::PlaceholderText, QPalette::Base},
                    palette.color(QPalette::Active, QPalette::Text));
    }
    for (const auto& [role, ground] : {TextOnGround{QPalette::WindowText, QPalette::Window},
                                       {QPalette::Text, QPalette::Base},
                                       {QPalette::ButtonText, QPalette::Button}}) {
        makeVisible(palette, QPalette::Disabled, {role, ground}, palette.color(QPalette::Active, role));
    }
    return palette;
}

} // namespace morlaine::Palettes
