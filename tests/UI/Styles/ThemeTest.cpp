#include "UI/Styles/Theme.h"

#include "UI/Styles/Contrast.h"
#include "UI/Styles/Palettes.h"
#include "UI/Styles/VisualEffectWidget.h"

#include <QApplication>
#include <QStyle>
#include <QTest>

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

TEST_F(ThemeTest, TextsStandOutFromTheirBackgrounds)
{
    struct Pair {
        QPalette::ColorRole text;
        QPalette::ColorRole background;
        double least;
        double leastDisabled;
    };
    for (const auto& [name, palette] : allPalettes()) {
        for (const Pair& pair : {
                 Pair{QPalette::WindowText, QPalette::Window, 12, 2},
                 Pair{QPalette::Text, QPalette::Base, 12, 2},
                 Pair{QPalette::Text, QPalette::AlternateBase, 12, 2},
                 Pair{QPalette::ButtonText, QPalette::Button, 7, 1.9},
                 Pair{QPalette::ToolTipText, QPalette::ToolTipBase, 7, 2},
                 Pair{QPalette::HighlightedText, QPalette::Highlight, 4.5, 2},
                 Pair{QPalette::PlaceholderText, QPalette::Base, 4.5, 2},
                 Pair{QPalette::Link, QPalette::Base, 4.5, 2},
                 Pair{QPalette::LinkVisited, QPalette::Base, 4.5, 2},
             }) {
            SCOPED_TRACE(testing::Message() << name << ", role " << pair.text);
            for (const auto group : {QPalette::Active, QPalette::Inactive}) {
                EXPECT_GE(contrastRatio(palette.color(group, pair.text), palette.color(group, pair.background)),
                          pair.least);
            }
            EXPECT_GE(contrastRatio(palette.color(QPalette::Disabled, pair.text),
                                    palette.color(QPalette::Disabled, pair.background)),
                      pair.leastDisabled);
        }
    }
}

TEST_F(ThemeTest, SecondaryAndTertiaryTextRecedeAndStayReadable)
{
    auto palettes = allPalettes();
    palettes.emplace_back("the toolkit's", QApplication::style()->standardPalette());
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
            EXPECT_GE(contrast(Theme::textTertiary), std::min(3.0, reachable));
            if (reachable > 7) {
                EXPECT_LT(contrast(Theme::textSecondary), reachable * 0.6);
                EXPECT_LT(contrast(Theme::textTertiary), contrast(Theme::textSecondary) * 0.75);
            }
        }
    }
}

TEST_F(ThemeTest, OnlySystemColorsFollowTheAppearance)
{
    for (const auto color : {Theme::panelBackground, Theme::controlBackground, Theme::textPrimary, Theme::textSecondary,
                             Theme::textTertiary}) {
        EXPECT_NE(color(Palettes::light()), color(Palettes::dark()));
    }

    QApplication::setPalette(Palettes::dark());
    EXPECT_EQ(Theme::accent, Theme::blue);
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
            QTest::qWaitFor([&] { return widget->grab().toImage().pixelColor(widget->rect().center()) == expected; }));
    }
}

} // namespace morlaine
