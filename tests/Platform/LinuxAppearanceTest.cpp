#include "Platform/Linux/LinuxAppearance.h"

#include "Support/FakeSettingsPortal.h"
#include "Support/PrivateBus.h"

#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace morlaine {

namespace {

using namespace std::chrono_literals;

using Preference = Appearance::Preference;
using test::FakeSettingsPortal;
using test::PrivateBus;
using Version = FakeSettingsPortal::Version;

constexpr auto longEnough = 10s;

} // namespace

TEST(LinuxAppearanceTest, LearnsThePreferenceFromPortalsOfEveryAge)
{
    struct Case {
        const char* name;
        Version version;
        uint scheme;
        Preference expected;
    };
    for (const Case& c : {
             Case{"dark", Version::current, 1, Preference::dark},
             Case{"light", Version::current, 2, Preference::light},
             Case{"no preference", Version::current, 0, Preference::none},
             Case{"a value of the future", Version::current, 3, Preference::none},
             Case{"dark, twice wrapped", Version::withoutReadOne, 1, Preference::dark},
             Case{"light, twice wrapped", Version::withoutReadOne, 2, Preference::light},
             Case{"a portal without the setting", Version::withoutTheKey, 1, Preference::none},
         }) {
        SCOPED_TRACE(c.name);
        PrivateBus bus;
        const FakeSettingsPortal portal(bus.connect(), c.version, c.scheme);
        LinuxAppearance appearance([&] { return bus.connect(); });
        appearance.waitForAnswer(longEnough);
        EXPECT_EQ(appearance.preference(), c.expected);
    }
}

TEST(LinuxAppearanceTest, FollowsChangesOfThatSettingOnly)
{
    PrivateBus bus;
    FakeSettingsPortal portal(bus.connect(), Version::current, 2);
    LinuxAppearance appearance([&] { return bus.connect(); });
    std::vector<Preference> seen;
    appearance.observe([&seen](Preference preference) { seen.push_back(preference); });
    appearance.waitForAnswer(longEnough);

    portal.change(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("contrast"), 1U);
    portal.change(QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("color-scheme"), 1U);
    portal.changeScheme(2);
    portal.changeScheme(1);
    portal.changeScheme(0);
    EXPECT_TRUE(QTest::qWaitFor([&seen] { return seen.size() >= 3; }));
    EXPECT_EQ(seen, (std::vector{Preference::light, Preference::dark, Preference::none}));
}

TEST(LinuxAppearanceTest, AChangeWhileTheQuestionIsOpenCounts)
{
    PrivateBus bus;
    FakeSettingsPortal portal(bus.connect(), Version::silent, 0);
    LinuxAppearance appearance([&] { return bus.connect(); });
    ASSERT_TRUE(QTest::qWaitFor([&portal] { return portal.questions() == 1; }));
    appearance.waitForAnswer(1ms);
    EXPECT_EQ(appearance.preference(), Preference::none);

    portal.changeScheme(1);
    appearance.waitForAnswer(longEnough);
    EXPECT_EQ(appearance.preference(), Preference::dark);
}

TEST(LinuxAppearanceTest, HasNoPreferenceWithoutABusOrAPortal)
{
    LinuxAppearance withoutBus([] { return QDBusConnection(QStringLiteral("no such connection")); });
    withoutBus.waitForAnswer(std::chrono::hours(1));
    EXPECT_EQ(withoutBus.preference(), Preference::none);

    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    LinuxAppearance withoutPortal([&] { return bus.connect(); });
    withoutPortal.waitForAnswer(std::chrono::hours(1));
    EXPECT_EQ(withoutPortal.preference(), Preference::none);
}

} // namespace morlaine
