#include "UI/Views/MainView.h"

#include <QTest>

#include <gtest/gtest.h>

namespace morlaine {

TEST(MainViewTest, IsTitledMorlaine)
{
    const MainView view;
    EXPECT_EQ(view.windowTitle(), QStringLiteral("Morlaine"));
}

TEST(MainViewTest, KeepsItsMinimumContentSizeWhenResizedSmaller)
{
    MainView view;
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    const auto hasContentSize = [&view](QSize size) {
        return QTest::qWaitFor([&view, size] { return view.centralWidget()->size() == size; });
    };

    view.resize(1200, 900);
    ASSERT_TRUE(hasContentSize({1200, 900}));
    view.resize(100, 100);
    EXPECT_TRUE(hasContentSize({960, 640}));
}

} // namespace morlaine
