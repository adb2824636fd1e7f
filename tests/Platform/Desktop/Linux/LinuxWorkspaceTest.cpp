#include "Platform/Desktop/Linux/LinuxWorkspace.h"

#include "Support/Environment.h"
#include "Support/PrivateBus.h"
#include "Support/Socket.h"
#include "Support/Wait.h"

#include <QClipboard>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace morlaine {
namespace {

using test::Environment;
using test::FakeService;
using test::PrivateBus;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string oddPath = "/tmp/a b#c%41?\n\xE9/\xF0\x9F\x98\x80 \xFF;&'\"";
const std::string oddFolderUrl = "file:///tmp/a%20b%23c%2541%3F%0A%E9";
const std::string oddUrl = oddFolderUrl + "/%F0%9F%98%80%20%FF;&'%22";

/// Replaces the desktop's opener.
class Opener final : public QObject {
    Q_OBJECT

public:
    Opener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "handle"); }
    ~Opener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    std::vector<std::string> opened;

public Q_SLOTS:
    void handle(const QUrl& url) { opened.push_back(url.toEncoded().toStdString()); }
};

class LinuxWorkspaceTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(bus.isRunning()); }

    [[nodiscard]] bool somethingWasOpened() const
    {
        return test::waitUntil([this] { return !opener.opened.empty(); });
    }

    const PrivateBus bus;
    const QString fileManager = QStringLiteral("org.freedesktop.FileManager1");
    Opener opener;
    LinuxWorkspace workspace{[this] { return bus.connect(); }};
};

TEST_F(LinuxWorkspaceTest, ShowsTheItemInTheFileManager)
{
    const FakeService service(bus, fileManager, [](const QDBusMessage& call) { return call.createReply(); });
    const auto wasAsked = [&](std::size_t times) {
        return test::waitUntil([&] { return service.calls(QStringLiteral("ShowItems")).size() == times; });
    };
    workspace.selectFile(oddPath, "");
    ASSERT_TRUE(wasAsked(1));
    workspace.selectFile("/srv/a", "/srv");
    ASSERT_TRUE(wasAsked(2));

    const std::vector<QDBusMessage> calls = service.calls(QStringLiteral("ShowItems"));
    EXPECT_EQ(calls[0].arguments(), (QVariantList{QStringList(QString::fromStdString(oddUrl)), QString()}));
    EXPECT_EQ(calls[1].arguments(), (QVariantList{QStringList(QStringLiteral("file:///srv/a")), QString()}));
    EXPECT_THAT(opener.opened, IsEmpty());
}

TEST_F(LinuxWorkspaceTest, OpensTheFolderWhereNoFileManagerShowsItems)
{
    const std::tuple<std::string, const char*, std::string> cases[] = {
        {oddPath, "", oddFolderUrl}, {"/srv/a/b/", "", "file:///srv/a"},  {"/srv", "", "file:///"},
        {"/", "", "file:///"},       {"/srv/a/b", "/srv", "file:///srv"},
    };
    for (const auto& [path, rootPath, opened] : cases) {
        opener.opened.clear();
        workspace.selectFile(path, rootPath);
        ASSERT_TRUE(somethingWasOpened());
        EXPECT_THAT(opener.opened, ElementsAre(opened)) << path;
    }

    const FakeService service(bus, fileManager,
                              [](const auto& call) { return call.createErrorReply(QDBusError::Failed, {}); });
    opener.opened.clear();
    workspace.selectFile("/srv/a/b", "");
    ASSERT_TRUE(somethingWasOpened());
    EXPECT_THAT(opener.opened, ElementsAre("file:///srv/a"));
    EXPECT_EQ(service.calls(QStringLiteral("ShowItems")).size(), 1U);
}

TEST_F(LinuxWorkspaceTest, KeepsTheWindowAliveWhileTheBusDoesNotAnswer)
{
    const TemporaryFolder folder;
    const std::string path = folder.path() / "bus";
    const int socket = test::listeningSocket(path);
    ASSERT_GE(socket, 0);
    LinuxWorkspace slow([&path] {
        return QDBusConnection::connectToBus(QStringLiteral("unix:path=") + QString::fromStdString(path),
                                             QStringLiteral("slow bus"));
    });
    slow.selectFile("/srv/a/b", "");
    bool isAlive = false;
    QMetaObject::invokeMethod(
        &opener, [&isAlive] { isAlive = true; }, Qt::QueuedConnection);
    ASSERT_TRUE(test::waitUntil([&isAlive] { return isAlive; }));
    EXPECT_THAT(opener.opened, IsEmpty());

    ::close(socket);
    EXPECT_TRUE(somethingWasOpened());
    QDBusConnection::disconnectFromBus(QStringLiteral("slow bus"));
}

TEST_F(LinuxWorkspaceTest, OpensAndCopiesExactBytes)
{
    workspace.open(FileUrl::fromPath(oddPath));
    EXPECT_THAT(opener.opened, ElementsAre(oddUrl));
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    workspace.copyText(oddPath);
    EXPECT_EQ(clipboard.mimeData()->data(QStringLiteral("text/plain")).toStdString(), oddPath);
    workspace.copyText("/tmp/é b");
    EXPECT_EQ(clipboard.text().toStdString(), "/tmp/é b");
}

TEST_F(LinuxWorkspaceTest, OpensTheSettingsOfTheDesktop)
{
    const FakeService settings(bus, QStringLiteral("org.gnome.Settings"),
                               [](const QDBusMessage& call) { return call.createReply(); });
    const Environment desktop("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    workspace.openPrivacySettings();
    ASSERT_TRUE(test::waitUntil([&] { return !settings.calls(QStringLiteral("ActivateAction")).empty(); }));

    const QDBusMessage call = settings.calls(QStringLiteral("ActivateAction")).front();
    EXPECT_EQ(call.signature(), QStringLiteral("sava{sv}"));
    const auto parameters = qdbus_cast<QVariantList>(call.arguments().at(1));
    const auto panel = parameters.at(0).value<QDBusVariant>().variant().value<QDBusArgument>();
    EXPECT_EQ(panel.currentSignature(), QStringLiteral("(sav)"));
    QString name;
    panel.beginStructure();
    panel >> name;
    EXPECT_EQ(name, QStringLiteral("privacy"));
}

TEST_F(LinuxWorkspaceTest, StartsTheSettingsWhereTheBusHasNone)
{
    const struct {
        const char* desktop;
        const char* program;
        const char* started;
    } cases[] = {{"GNOME", "gnome-control-center", "privacy\n"},
                 {"X-Other:KDE", "systemsettings", "\n"},
                 {"X-Cinnamon", "cinnamon-settings", "privacy\n"}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.desktop);
        const TemporaryFolder folder;
        const std::filesystem::path program = folder.path() / each.program;
        const std::filesystem::path result = folder.path() / "started";
        std::ofstream(program) << "#!/bin/sh\necho noise\necho \"$*\" >'" << result.native() << ".new'\n/bin/mv '"
                               << result.native() << ".new' '" << result.native() << "'\n";
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        const Environment path("PATH", folder.path());
        const Environment desktop("XDG_CURRENT_DESKTOP", each.desktop);

        workspace.openPrivacySettings();
        ASSERT_TRUE(test::waitUntil([&] { return std::filesystem::exists(result); }));
        std::string arguments;
        std::getline(std::ifstream(result), arguments, '\0');
        EXPECT_EQ(arguments, each.started);
    }
    EXPECT_FALSE(privacySettingsRoute(""));
    EXPECT_FALSE(privacySettingsRoute("gnome:X-Unknown:"));
}

} // namespace
} // namespace morlaine

#include "LinuxWorkspaceTest.moc"
