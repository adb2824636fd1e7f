#include "Platform/Desktop/Linux/LinuxAppearance.h"

#include "Support/PrivateBus.h"
#include "Support/Wait.h"

#include <QDBusVariant>

#include <gmock/gmock.h>

namespace morlaine {
namespace {

using namespace std::chrono_literals;
using Preference = Appearance::Preference;
using test::FakeService;
using test::longEnough;
using test::PrivateBus;

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");

enum class Version { current, withoutReadOne, withoutTheKey, silent };

/// A settings portal that only knows the colour scheme.
FakeService::Answer portal(Version version, uint scheme)
{
    return [version, scheme](const QDBusMessage& call) {
        const bool isReadOne = call.member() == QStringLiteral("ReadOne");
        if (version == Version::silent) {
            return QDBusMessage();
        }
        if (version == Version::withoutReadOne && isReadOne) {
            return call.createErrorReply(QDBusError::UnknownMethod, {});
        }
        if (version == Version::withoutTheKey || call.arguments() != QVariantList{appearanceGroup, schemeKey}) {
            return call.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), {});
        }
        const auto value = QVariant::fromValue(QDBusVariant(scheme));
        return call.createReply(isReadOne ? value : QVariant::fromValue(QDBusVariant(value)));
    };
}

void change(const FakeService& service, uint value, const QString& group = appearanceGroup,
            const QString& key = schemeKey)
{
    QDBusMessage signal =
        QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                   QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
    signal << group << key << QVariant::fromValue(QDBusVariant(value));
    service.connection().send(signal);
}

TEST(LinuxAppearanceTest, LearnsThePreferenceFromPortalsOfEveryAge)
{
    const std::tuple<Version, uint, Preference> cases[] = {
        {Version::current, 1, Preference::dark},        {Version::current, 2, Preference::light},
        {Version::current, 0, Preference::none},        {Version::current, 3, Preference::none},
        {Version::withoutReadOne, 1, Preference::dark}, {Version::withoutReadOne, 2, Preference::light},
        {Version::withoutTheKey, 1, Preference::none}};
    for (const auto& [version, scheme, expected] : cases) {
        PrivateBus bus;
        const FakeService service(bus, portalName, portal(version, scheme));
        LinuxAppearance appearance([&] { return bus.connect(); });
        appearance.waitForAnswer(longEnough);
        EXPECT_EQ(appearance.preference(), expected) << static_cast<int>(version) << ' ' << scheme;
    }
}

TEST(LinuxAppearanceTest, FollowsChangesOfThatSettingOnly)
{
    PrivateBus bus;
    const FakeService service(bus, portalName, portal(Version::current, 2));
    LinuxAppearance appearance([&] { return bus.connect(); });
    std::vector<Preference> seen;
    appearance.observe([&seen](Preference preference) { seen.push_back(preference); });
    appearance.waitForAnswer(longEnough);
    change(service, 1, appearanceGroup, QStringLiteral("contrast"));
    change(service, 1, QStringLiteral("org.gnome.desktop.interface"));
    for (const uint scheme : {2U, 1U, 0U}) {
        change(service, scheme);
    }
    EXPECT_TRUE(test::waitUntil([&seen] { return seen.size() >= 3; }));
    EXPECT_EQ(seen, (std::vector{Preference::light, Preference::dark, Preference::none}));
}

TEST(LinuxAppearanceTest, AChangeWhileTheQuestionIsOpenCounts)
{
    PrivateBus bus;
    const FakeService service(bus, portalName, portal(Version::silent, 0));
    LinuxAppearance appearance([&] { return bus.connect(); });
    const auto isAsked = [&] { return !service.calls(QStringLiteral("ReadOne")).empty(); };
    ASSERT_TRUE(test::waitUntil(isAsked)) << "and listens since before";
    EXPECT_EQ(appearance.preference(), Preference::none);
    change(service, 1);
    appearance.waitForAnswer(longEnough);
    EXPECT_EQ(appearance.preference(), Preference::dark);
}

TEST(LinuxAppearanceTest, HasNoPreferenceWithoutABusOrAPortal)
{
    LinuxAppearance withoutBus([] { return QDBusConnection(QStringLiteral("no such connection")); });
    withoutBus.waitForAnswer(1h);
    EXPECT_EQ(withoutBus.preference(), Preference::none);

    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    LinuxAppearance withoutPortal([&] { return bus.connect(); });
    withoutPortal.waitForAnswer(1h);
    EXPECT_EQ(withoutPortal.preference(), Preference::none);
}

} // namespace
} // namespace morlaine
