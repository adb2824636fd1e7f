#include "UI/Styles/Theme.h"

#include "Support/Wait.h"
#include "UI/Styles/Contrast.h"
#include "UI/Styles/Palettes.h"
#include "UI/Styles/VisualEffectWidget.h"

#include <QApplication>
#include <QStyle>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace morlaine {

namespace {

std::vector<std::pair<const char*, QPalette>> allPalettes()
{
    return {{"light", Palettes::light()}, {"dark", Palettes::dark()}};
}

class ThemeTest : public testing::Test {
protected:
    ~ThemeTest() override { QApplication::setPalette(QPalette()); }
};

} // namespace

TEST_F(ThemeTest, TextsStandOutFromTheirGrounds)
{
    using Colors = std::vector<QColor>;
    const auto expectReadable = [](const Colors& texts, const Colors& grounds) {
        for (const QColor& text : texts) {
            for (const QColor& ground : grounds) {
                EXPECT_GE(contrastRatio(text, ground), 4.5)
                    << text.name().toStdString() << " on " << ground.name().toStdString();
            }
        }
    };
    for (auto [name, palette] : allPalettes()) {
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            SCOPED_TRACE(testing::Message() << name << ", group " << group);
            palette.setCurrentColorGroup(group);
            const auto of = [&colors = palette](QPalette::ColorRole role) { return colors.color(role); };
            const auto laidOn = [&](QPalette::ColorRole ground, double opacity) {
                return mixed(of(QPalette::WindowText), of(ground), opacity);
            };
            const Colors panels{of(QPalette::Window), of(QPalette::Base), of(QPalette::AlternateBase)};
            const Colors texts{of(QPalette::WindowText), of(QPalette::Text), Theme::textSecondary(palette),
                               Theme::textTertiary(palette)};
            expectReadable(texts, panels);
            expectReadable({of(QPalette::ButtonText)}, {of(QPalette::Button), of(QPalette::Window)});
            expectReadable({of(QPalette::ToolTipText)}, {of(QPalette::ToolTipBase)});
            expectReadable({of(QPalette::HighlightedText)}, {of(QPalette::Highlight)});
            expectReadable({of(QPalette::PlaceholderText), of(QPalette::Link), of(QPalette::LinkVisited)},
                           {of(QPalette::Base)});
            if (group == QPalette::Disabled) {
                continue;
            }
            const Colors heldDown{laidOn(QPalette::Window, Theme::hoverOpacity),
                                  laidOn(QPalette::Window, Theme::pressedOpacity)};
            expectReadable({Theme::textOfCancelling(palette), of(QPalette::ButtonText)}, heldDown);
            expectReadable({of(QPalette::ButtonText)}, {laidOn(QPalette::Button, Theme::pressedOpacity)});
            expectReadable({texts[0], texts[2]}, {heldDown[0], Theme::mutedSelection(palette)});
        }
    }
}

TEST_F(ThemeTest, SecondaryAndTertiaryTextRecedeAndStayReadable)
{
    auto palettes = allPalettes();
    palettes.emplace_back("Qt's", QApplication::style()->standardPalette());
    palettes.emplace_back("of little contrast", QPalette(QColor(128, 128, 128)));
    palettes.back().second.setColor(QPalette::WindowText, QColor(60, 60, 60));
    for (const auto& [name, palette] : palettes) {
        SCOPED_TRACE(name);
        for (const auto background : {Theme::panelBackground, Theme::controlBackground}) {
            const auto contrast = [background, &colors = palette](Theme::SystemColor color) {
                return contrastRatio(color(colors), background(colors));
            };
            const double reachable = contrast(Theme::textPrimary);
            EXPECT_GE(contrast(Theme::textSecondary), std::min(4.5, reachable));
            EXPECT_GE(contrast(Theme::textTertiary), std::min(4.5, reachable));
            if (reachable > 7) {
                EXPECT_LT(contrast(Theme::textSecondary), reachable * 0.6);
                EXPECT_LT(contrast(Theme::textTertiary), contrast(Theme::textSecondary) * 0.75);
            }
        }
    }
}

TEST_F(ThemeTest, AVisualEffectWidgetIsFilledWithThePanelBackgroundOfAnActiveWindow)
{
    Theme::VisualEffectWidget* widget = Theme::VisualEffectView().make(nullptr);
    const std::unique_ptr<QWidget> owner(widget);
    for (const auto& [name, palette] : allPalettes()) {
        SCOPED_TRACE(name);
        QPalette withPaleInactive = palette;
        withPaleInactive.setColor(QPalette::Inactive, QPalette::Window, Qt::red);
        QApplication::setPalette(withPaleInactive);
        const QColor expected = Theme::panelBackground(palette);
        EXPECT_TRUE(
            test::waitUntil([&] { return widget->grab().toImage().pixelColor(widget->rect().center()) == expected; }));
    }
}

} // namespace morlaine
