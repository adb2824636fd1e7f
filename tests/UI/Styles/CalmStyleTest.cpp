#include "UI/Styles/CalmStyle.h"

#include <QStyleOption>

#include <gtest/gtest.h>

namespace morlaine {

TEST(CalmStyleTest, PartsOfAScrollBarCoverItWithoutOverlap)
{
    const std::tuple<int, int, int, int> cases[] = {{100, 100, 0, 100},
                                                    {100, 100, 37, 100},
                                                    {100, 100, 100, 100},
                                                    {2'000'000'000, 10, 1'000'000'000, 28}, // the minimum length
                                                    {0, 10, 0, 200}};
    const CalmStyle style;
    for (const auto& [maximum, pageStep, position, expectedSlider] : cases) {
        for (const auto orientation : {Qt::Horizontal, Qt::Vertical}) {
            const bool isHorizontal = orientation == Qt::Horizontal;
            QStyleOptionSlider option;
            option.rect = isHorizontal ? QRect(3, 5, 200, 12) : QRect(3, 5, 12, 200);
            option.orientation = orientation;
            option.maximum = maximum;
            option.pageStep = pageStep;
            option.sliderPosition = position;
            const auto part = [&](QStyle::SubControl subControl) {
                return style.subControlRect(QStyle::CC_ScrollBar, &option, subControl, nullptr);
            };
            const QRect slider = part(QStyle::SC_ScrollBarSlider);
            const QRect before = part(QStyle::SC_ScrollBarSubPage);
            const QRect after = part(QStyle::SC_ScrollBarAddPage);
            EXPECT_EQ(isHorizontal ? slider.width() : slider.height(), expectedSlider);
            EXPECT_EQ(before | slider | after, option.rect);
            EXPECT_FALSE(before.intersects(slider) || slider.intersects(after));
            EXPECT_EQ(before.isEmpty(), position == 0);
            EXPECT_EQ(after.isEmpty(), position == maximum);
        }
    }
}

} // namespace morlaine
