#include "Platform/Desktop/Linux/LinuxApplicationService.h"

#include "Support/PrivateBus.h"
#include "Support/Wait.h"

#include <QDBusPendingCall>
#include <QVariantMap>

#include <gmock/gmock.h>

namespace morlaine {
namespace {

using testing::ElementsAre;

/// Calls through another connection, as a file manager does.
QDBusMessage call(QDBusConnection& bus, const QString& member, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(QStringLiteral("com.morlaine.Morlaine"),
                                                          QStringLiteral("/com/morlaine/Morlaine"),
                                                          QStringLiteral("org.freedesktop.Application"), member);
    message.setArguments(arguments);
    const QDBusPendingCall pending = bus.asyncCall(message, test::longEnoughInMilliseconds);
    EXPECT_TRUE(test::waitUntil([&pending] { return pending.isFinished(); }));
    return pending.reply();
}

TEST(LinuxApplicationServiceTest, OpensWhatAFileManagerNamesAndComesToTheFront)
{
    const test::PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    std::vector<std::string> opened;
    int activations = 0;
    const LinuxApplicationService service({[&activations] { ++activations; },
                                           [&opened](const std::vector<FileUrl>& urls) {
                                               for (const FileUrl& url : urls) {
                                                   opened.push_back(url.path());
                                               }
                                           }},
                                          [&bus] { return bus.connect(); });
    QDBusConnection fileManager = bus.connect();
    const auto open = [&fileManager](const QVariantList& arguments) {
        return call(fileManager, QStringLiteral("Open"), arguments);
    };
    const QStringList urls{QStringLiteral("file:///tmp/a%FF"), QStringLiteral("https://example.org/"),
                           QStringLiteral("file:///b")};
    QDBusMessage reply;
    ASSERT_TRUE(test::waitUntil([&] {
        return (reply = open({urls, QVariantMap()})).type() == QDBusMessage::ReplyMessage;
    }));
    EXPECT_THAT(opened, ElementsAre("/tmp/a\xFF", "/b"));

    reply = call(fileManager, QStringLiteral("Activate"), {QVariantMap()});
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(activations, 1);
    EXPECT_EQ(open({QStringLiteral("file:///c")}).type(), QDBusMessage::ErrorMessage) << "wrong parameters";
    EXPECT_EQ(opened.size(), 2U);
}

} // namespace
} // namespace morlaine
