#include "UI/Widgets/ProgressIndicator.h"

#include "Support/Wait.h"

#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace morlaine {
namespace {

TEST(ProgressIndicator, TurnsWhileItCanBeSeen)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* indicator = new ProgressIndicator(ProgressIndicator::Size::regular, QStringLiteral("Scanning"));
    layout->addWidget(indicator);
    EXPECT_FALSE(indicator->isAnimating());

    window.show();
    EXPECT_TRUE(indicator->isAnimating());
    const QImage first = indicator->grab().toImage();
    EXPECT_TRUE(test::waitUntil([&] { return indicator->grab().toImage() != first; }));

    window.hide();
    EXPECT_FALSE(indicator->isAnimating());
}

} // namespace
} // namespace morlaine
