#include "UI/Styles/DesktopAppearance.h"

#include "Support/Wait.h"
#include "UI/Styles/Contrast.h"
#include "UI/Styles/Palettes.h"
#include "UI/Styles/StyledLabel.h"

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>

#include <gtest/gtest.h>

namespace morlaine {

namespace {

using Preference = Appearance::Preference;

/// A desktop that answers in time, or only when the test calls `change`.
class FakeAppearance final : public Appearance {
public:
    FakeAppearance(Preference preference, bool answersInTime) : m_answer(preference), m_answersInTime(answersInTime) {}

    [[nodiscard]] Preference preference() const override { return m_preference; }

    void waitForAnswer(std::chrono::milliseconds /*patience*/) override
    {
        if (m_answersInTime) {
            m_preference = m_answer;
        }
    }

    void observe(Observer observer) override { m_observer = std::move(observer); }

    void change(Preference preference)
    {
        m_preference = preference;
        m_observer(preference);
    }

private:
    Preference m_answer;
    Preference m_preference = Preference::none;
    bool m_answersInTime;
    Observer m_observer;
};

QColor windowColor()
{
    return QApplication::palette().color(QPalette::Window);
}

const QColor lightWindow = Palettes::light().color(QPalette::Window);
const QColor darkWindow = Palettes::dark().color(QPalette::Window);

class DesktopAppearanceTest : public testing::Test {
protected:
    ~DesktopAppearanceTest() override
    {
        QApplication::setPalette(QPalette());
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("fusion")));
    }
};

} // namespace

TEST_F(DesktopAppearanceTest, IsDarkFromTheStartWhereTheUserWantsThat)
{
    for (const auto preference : {Preference::none, Preference::light, Preference::dark}) {
        const DesktopAppearance appearance(std::make_unique<FakeAppearance>(preference, true));
        EXPECT_EQ(windowColor(), preference == Preference::dark ? darkWindow : lightWindow);
        QApplication::setPalette(QPalette());
    }
}

TEST_F(DesktopAppearanceTest, FollowsALateAnswerAndChangesWhileRunning)
{
    auto owned = std::make_unique<FakeAppearance>(Preference::dark, false);
    FakeAppearance& desktop = *owned;
    const DesktopAppearance appearance(std::move(owned));
    const StyledLabel label(TextStyle::body);
    EXPECT_EQ(windowColor(), lightWindow);
    desktop.change(Preference::dark);
    EXPECT_EQ(windowColor(), darkWindow);
    const QColor darkText = Palettes::dark().color(QPalette::WindowText);
    EXPECT_TRUE(test::waitUntil([&] { return label.palette().color(QPalette::WindowText) == darkText; }));
    desktop.change(Preference::none);
    EXPECT_EQ(windowColor(), lightWindow);
}

TEST_F(DesktopAppearanceTest, LeavesTheColorsAndTheStyleOfADesktopAlone)
{
    const QPalette ofDesktop(QColor(60, 90, 60), QColor(220, 235, 220));
    QApplication::setPalette(ofDesktop);
    const QStyle* style = QApplication::style();
    const DesktopAppearance appearance(std::make_unique<FakeAppearance>(Preference::dark, true));
    EXPECT_EQ(windowColor(), QColor(220, 235, 220));
    EXPECT_EQ(QApplication::style(), style);

    // A desktop may leave texts black on black, at the start or later.
    const QPalette blackOnBlack(Qt::white, Qt::black, Qt::white, Qt::black, Qt::black, Qt::white, Qt::white, Qt::black,
                                Qt::black);
    QApplication::setPalette(blackOnBlack);
    EXPECT_EQ(windowColor(), QColor(Qt::black));
    const QPalette shown = QApplication::palette();
    EXPECT_GE(contrastRatio(shown.color(QPalette::PlaceholderText), Qt::black), 3);
    EXPECT_GE(contrastRatio(shown.color(QPalette::Disabled, QPalette::ButtonText), Qt::black), 3);
}

} // namespace morlaine
