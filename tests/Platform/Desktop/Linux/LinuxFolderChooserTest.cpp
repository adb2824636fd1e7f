#include "Platform/Desktop/Linux/LinuxFolderChooser.h"

#include "Platform/Desktop/Linux/FolderDialog.h"
#include "Support/PrivateBus.h"
#include "Support/Widgets.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gmock/gmock.h>

#include <algorithm>

namespace morlaine {
namespace {

using test::FakeService;
using test::PrivateBus;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString openFile = QStringLiteral("OpenFile");

QVariantMap optionsOf(const QDBusMessage& call)
{
    return qdbus_cast<QVariantMap>(call.arguments().value(2));
}

QString requestPathOf(const QDBusMessage& call)
{
    return QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
        .arg(call.service().mid(1).replace(u'.', u'_'), optionsOf(call)[QStringLiteral("handle_token")].toString());
}

/// Answers like a portal of that version, without showing anything.
FakeService::Answer portal(uint version)
{
    return [version](const QDBusMessage& call) {
        if (call.member() == openFile) {
            return call.createReply(QVariant::fromValue(QDBusObjectPath(requestPathOf(call))));
        }
        return call.member() == QStringLiteral("Get") ? call.createReply(QVariant::fromValue(QDBusVariant(version)))
                                                      : call.createReply();
    };
}

class LinuxFolderChooserTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        window->show();
        ASSERT_TRUE(test::waitUntilExposed(window.get()));
    }

    void choose() { choose(chooser); }
    void choose(LinuxFolderChooser& asked)
    {
        asked.choose(*window, {"Select Folder to Scan", "Scan"},
                     [this](const FileUrl& url) { chosen.push_back(url.path()); });
    }

    /// The request for a dialog that the portal received.
    [[nodiscard]] static std::optional<QDBusMessage> requestTo(const FakeService& service)
    {
        const bool wasAsked = test::waitUntil([&] { return !service.calls(openFile).empty(); });
        return wasAsked ? std::optional(service.calls(openFile).back()) : std::nullopt;
    }

    static void answer(const FakeService& service, const QDBusMessage& call, uint response, const QStringList& urls)
    {
        QDBusMessage signal = QDBusMessage::createTargetedSignal(call.service(), requestPathOf(call),
                                                                 QStringLiteral("org.freedesktop.portal.Request"),
                                                                 QStringLiteral("Response"));
        signal << response << QVariantMap{{QStringLiteral("uris"), urls}};
        service.connection().send(signal);
    }

    /// The program's own dialog, once it is open.
    [[nodiscard]] FolderDialog* ownDialog() const
    {
        FolderDialog* dialog = nullptr;
        const auto isOpen = [&] {
            dialog = window->findChild<FolderDialog*>();
            return dialog != nullptr && dialog->isVisible();
        };
        return test::waitUntil(isOpen) ? dialog : nullptr;
    }

    [[nodiscard]] static bool waitUntilNothingIsModal()
    {
        return test::waitUntil([] { return QApplication::activeModalWidget() == nullptr; });
    }

    const PrivateBus bus;
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    std::vector<std::string> chosen;
    LinuxFolderChooser chooser{[this] { return bus.connect(); }, test::longEnough};
    LinuxFolderChooser impatient{[this] { return bus.connect(); }, std::chrono::milliseconds(50)};
};

TEST_F(LinuxFolderChooserTest, TakesTheFolderThatThePortalReturns)
{
    const FakeService service(bus, portalName, portal(3));
    choose();
    const std::optional<QDBusMessage> call = requestTo(service);
    ASSERT_TRUE(call);
    EXPECT_EQ(call->signature(), QStringLiteral("ssa{sv}"));
    EXPECT_EQ(call->arguments().at(1), QStringLiteral("Select Folder to Scan"));
    EXPECT_EQ(optionsOf(*call)[QStringLiteral("accept_label")], QStringLiteral("Scan"));
    EXPECT_EQ(optionsOf(*call)[QStringLiteral("directory")], true);
    EXPECT_NE(QApplication::activeModalWidget(), nullptr);

    answer(service, *call, 0, {QStringLiteral("file:///srv/a%20b%23/T%E9l%E9/")});
    EXPECT_TRUE(test::waitUntil([this] { return !chosen.empty(); }));
    EXPECT_THAT(chosen, ElementsAre("/srv/a b#/T\xE9l\xE9"));
    EXPECT_TRUE(waitUntilNothingIsModal());
}

TEST_F(LinuxFolderChooserTest, DoesNothingWhenThePortalsDialogIsCancelledOrThePortalEnds)
{
    {
        const FakeService service(bus, portalName, portal(4));
        for (const uint response : {1U, 2U, 3U}) {
            choose();
            ASSERT_TRUE(test::waitUntil([&] { return service.calls(openFile).size() == response; }));
            choose(); // does nothing while the dialog is open
            ASSERT_NE(QApplication::activeModalWidget(), nullptr);
            if (response < 3) {
                answer(service, *requestTo(service), response, {QStringLiteral("file:///srv")});
                EXPECT_TRUE(waitUntilNothingIsModal());
            }
        }
        EXPECT_EQ(service.calls(openFile).size(), 3U);
    }
    EXPECT_TRUE(waitUntilNothingIsModal());
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(LinuxFolderChooserTest, TakesWhatTheLineOfItsOwnDialogSays)
{
    const TemporaryFolder folder;
    folder.makeFolder("a b#c/inner");
    folder.makeFolder("a b#c/T\xE9l\xE9");
    folder.makeFile("a b#c/file", 1);
    const std::string outer = folder.path() / "a b#c";
    struct Case {
        QString typed;
        std::vector<Qt::Key> keys; // pressed after typing
        std::string expected;      // empty if nothing is chosen
    };
    const Case cases[] = {
        {QString::fromStdString(outer), {Qt::Key_Return}, outer},
        {QString::fromStdString(outer + "/in"), {Qt::Key_Return}, ""},
        {QString::fromStdString(outer + "/file"), {Qt::Key_Return}, ""},
        {QStringLiteral("tmp"), {Qt::Key_Return}, ""},
        {QString::fromStdString(outer + "/in"), {Qt::Key_Down, Qt::Key_Return, Qt::Key_Return}, outer + "/inner"},
        {QString::fromStdString(outer + "/T"), {Qt::Key_Down, Qt::Key_Return, Qt::Key_Return}, outer + "/T\xE9l\xE9"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.typed.toStdString());
        chosen.clear();
        choose();
        FolderDialog* dialog = ownDialog();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowModality(), Qt::WindowModal);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Folder to Scan"));
        dialog->activateWindow();
        ASSERT_TRUE(test::waitUntil([dialog] { return dialog->isActiveWindow(); }));
        QTest::keyClicks(dialog->focusWidget(), each.typed); // replaces the selected text
        const auto* list = dialog->findChildren<QListWidget*>().back();
        if (each.keys.size() > 1) {
            ASSERT_TRUE(test::waitUntil([list] { return list->count() == 1; }));
        }
        for (const Qt::Key key : each.keys) {
            QTest::keyClick(dialog->focusWidget(), key);
        }
        const auto isSaid = [dialog] {
            return std::ranges::any_of(dialog->findChildren<QLabel*>(),
                                       [](const QLabel* label) { return label->text().endsWith(u'.'); });
        };
        if (each.expected.empty()) {
            EXPECT_TRUE(test::waitUntil(isSaid));
            EXPECT_TRUE(dialog->isVisible());
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Escape);
        }
        EXPECT_TRUE(waitUntilNothingIsModal());
        EXPECT_EQ(chosen, each.expected.empty() ? std::vector<std::string>{} : std::vector{each.expected});
        EXPECT_TRUE(test::waitUntil([this] { return window->findChild<QDialog*>() == nullptr; }));
    }
}

TEST_F(LinuxFolderChooserTest, OffersItsOwnDialogWhereThePortalHasNone)
{
    const std::pair<FakeService::Answer, LinuxFolderChooser&> cases[] = {
        {portal(2), chooser},
        {[](const QDBusMessage& call) { return call.createErrorReply(QDBusError::UnknownInterface, {}); }, chooser},
        {[](const QDBusMessage& call) {
             return call.member() == openFile ? call.createErrorReply(QDBusError::Failed, {}) : portal(4)(call);
         },
         chooser},
        {[](const QDBusMessage&) { return QDBusMessage(); }, impatient}, // never answers
    };
    for (const auto& [answer, asked] : cases) {
        const FakeService service(bus, portalName, answer);
        choose(asked);
        FolderDialog* dialog = ownDialog();
        ASSERT_NE(dialog, nullptr);
        dialog->reject();
        EXPECT_TRUE(test::waitUntil([this] { return window->findChild<QDialog*>() == nullptr; }));
    }
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(LinuxFolderChooserTest, ClosesTheDialogWithItsWindow)
{
    choose();
    ASSERT_NE(ownDialog(), nullptr);
    window->close();
    EXPECT_TRUE(test::waitUntil([this] { return window->findChild<QDialog*>() == nullptr; }));

    const FakeService service(bus, portalName, portal(4));
    const auto wasClosed = [&](std::size_t times) {
        return test::waitUntil([&] { return service.calls(QStringLiteral("Close")).size() == times; });
    };
    window->show();
    choose();
    ASSERT_TRUE(requestTo(service));
    window->close();
    ASSERT_TRUE(wasClosed(1));
    EXPECT_EQ(service.calls(QStringLiteral("Close"))[0].path(), requestPathOf(service.calls(openFile)[0]));

    window->show();
    choose();
    ASSERT_TRUE(test::waitUntil([&] { return service.calls(openFile).size() == 2; }));
    window.reset();
    EXPECT_TRUE(wasClosed(2));
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(LinuxFolderChooserTest, OpensNothingOnceTheWindowIsGone)
{
    const FakeService service(bus, portalName, portal(4));
    choose();
    window->close();
    ASSERT_TRUE(test::waitUntil([&] { return !service.calls(QStringLiteral("Get")).empty(); }));
    EXPECT_TRUE(test::waitUntil([this] { return window->findChild<QDialog*>() == nullptr; }));
    EXPECT_THAT(service.calls(openFile), IsEmpty());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace
} // namespace morlaine
