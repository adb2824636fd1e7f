#include "UI/Styles/Theme.h"

#include "UI/Styles/Contrast.h"
#include "UI/Styles/Palettes.h"
#include "UI/Styles/StyledLabel.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/VisualEffectWidget.h"

#include <QApplication>
#include <QStyle>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace morlaine {

namespace {

struct NamedPalette {
    const char* name;
    QPalette palette;
};

std::vector<NamedPalette> allPalettes()
{
    return {{"light", Palettes::light()}, {"dark", Palettes::dark()}};
}

QColor pixelInTheMiddle(QWidget& widget)
{
    return widget.grab().toImage().pixelColor(widget.rect().center());
}

class ThemeTest : public testing::Test {
protected:
    ~ThemeTest() override
    {
        QApplication::setPalette(QPalette());
        QApplication::setFont(m_font);
    }

private:
    QFont m_font = QApplication::font();
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
    std::vector<NamedPalette> palettes = allPalettes();
    palettes.push_back({"the toolkit's", QApplication::style()->standardPalette()});
    palettes.push_back({"of little contrast", QPalette(QColor(128, 128, 128))});
    palettes.back().palette.setColor(QPalette::WindowText, QColor(60, 60, 60));
    for (const NamedPalette& named : palettes) {
        SCOPED_TRACE(named.name);
        const QPalette& palette = named.palette;
        for (const auto background : {Theme::panelBackground, Theme::controlBackground}) {
            const auto contrast = [&](Theme::SystemColor color) {
                return contrastRatio(color(palette), background(palette));
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
    EXPECT_NEAR(Theme::progressBackground.alphaF(), 0.15, 0.002);
    EXPECT_EQ(Theme::progressBackground.rgb(), Theme::blue.rgb());
    const QGradientStops stops{{0, Theme::blue}, {0.5, Theme::purple}, {1, Theme::pink}};
    EXPECT_EQ(Theme::scanGradient().stops(), stops);
}

TEST_F(ThemeTest, AVisualEffectViewMakesAWidgetAndUpdatesItInPlace)
{
    QWidget window;
    Theme::VisualEffectView view;
    Theme::VisualEffectWidget* widget = view.make(&window);
    EXPECT_EQ(static_cast<int>(widget->material()), 7);
    EXPECT_EQ(static_cast<int>(widget->blendingMode()), 0);
    EXPECT_TRUE(widget->isAlwaysActive());

    view.material = Theme::Material{3};
    view.blendingMode = Theme::BlendingMode::withinWindow;
    EXPECT_EQ(static_cast<int>(widget->material()), 7);
    view.update(*widget);
    EXPECT_EQ(static_cast<int>(widget->material()), 3);
    EXPECT_EQ(static_cast<int>(widget->blendingMode()), 1);
    EXPECT_TRUE(widget->isAlwaysActive());
    EXPECT_EQ(window.findChildren<QWidget*>(), QList<QWidget*>{widget});
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
        EXPECT_TRUE(QTest::qWaitFor([&] { return pixelInTheMiddle(*widget) == expected; }));
    }
}

TEST_F(ThemeTest, ALabelKeepsItsStyleWhenAppearanceAndFontChange)
{
    QWidget window;
    const StyledLabel label(TextStyle::caption, Theme::textSecondary, &window);
    for (const NamedPalette& named : allPalettes()) {
        SCOPED_TRACE(named.name);
        const QPalette& palette = named.palette;
        QApplication::setPalette(palette);
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return label.palette().color(QPalette::WindowText) == Theme::textSecondary(palette) &&
                   label.palette().color(QPalette::Window) == Theme::panelBackground(palette);
        }));
    }
    const double before = label.font().pointSizeF();
    QFont larger = QApplication::font();
    larger.setPointSizeF(larger.pointSizeF() * 2);
    QApplication::setFont(larger);
    EXPECT_TRUE(QTest::qWaitFor([&] { return label.font().pointSizeF() > before * 1.9; }));
}

TEST_F(ThemeTest, TextStylesGrowAndShrinkWithTheApplicationsFont)
{
    constexpr std::array fromLarge{TextStyle::largeTitle,  TextStyle::title,   TextStyle::body,
                                   TextStyle::subheadline, TextStyle::caption, TextStyle::caption2};
    for (const double size : {9.0, 11.0, 24.0}) {
        QFont font = QApplication::font();
        font.setPointSizeF(size);
        QApplication::setFont(font);
        EXPECT_DOUBLE_EQ(TextStyles::font(TextStyle::body).pointSizeF(), size);
        EXPECT_DOUBLE_EQ(TextStyles::systemFont(13).pointSizeF(), size);
        EXPECT_TRUE(std::ranges::is_sorted(fromLarge, std::greater<>(),
                                           [](TextStyle style) { return TextStyles::font(style).pointSizeF(); }));
        EXPECT_GE(TextStyles::systemFont(9).pointSizeF(), 7);
        EXPECT_EQ(TextStyles::drawingFont(10).pixelSize(), 10);
    }
    EXPECT_EQ(TextStyles::font(TextStyle::headline).weight(), QFont::DemiBold);
    EXPECT_EQ(TextStyles::font(TextStyle::body, QFont::Medium).weight(), QFont::Medium);
}

} // namespace morlaine
