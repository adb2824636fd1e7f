#include "UI/Views/Window/MainView.h"

#include "Support/Gate.h"
#include "Support/ModelFixture.h"
#include "Support/Widgets.h"
#include "UI/Views/Treemap/TreemapCanvas.h"
#include "UI/Views/Window/AnalysisView.h"
#include "UI/Views/Window/MessageBanner.h"
#include "UI/Views/Window/OnboardingView.h"
#include "UI/Views/Window/WindowColumns.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <gmock/gmock.h>

#include <memory>

namespace morlaine {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Counts its calls.
class FakeFolderChooser final : public FolderChooser {
public:
    explicit FakeFolderChooser(int& count) : m_count(count) {}
    void choose(QWidget&, const Texts&, std::function<void(const FileUrl&)>) override { ++m_count; }

private:
    int& m_count;
};

/// All texts of `part` and its descendants, visible or accessible.
void collectTexts(QAccessibleInterface* part, QStringList& texts)
{
    for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help}) {
        texts.append(part->text(kind));
    }
    if (const auto* view = qobject_cast<QAbstractItemView*>(part->object()); view != nullptr && view->model()) {
        texts.append(view->model()->index(0, 0).data(Qt::ToolTipRole).toString());
    }
    for (int child = 0; child < part->childCount(); ++child) {
        collectTexts(part->child(child), texts);
    }
}

class MainViewTest : public testing::Test, protected test::ModelFixture {
protected:
    MainViewTest()
    {
        model.reset(); // the window makes its own model
        fileSystem->addFile("/r/sub/b", 4);
        window =
            std::make_unique<MainView>(MainViewModel::Environment{fileSystem, volumes, userFolders, workspace, *store},
                                       std::make_unique<FakeFolderChooser>(choices));
        window->show();
        window->activateWindow();
        EXPECT_TRUE(test::waitUntil([this] { return window->isActiveWindow(); }));
    }

    [[nodiscard]] MainViewModel& state() { return window->viewModel(); }

    /// Scans with the model's own operation and waits until the window shows the tree.
    void showTree()
    {
        state().scan(FileUrl::fromPath("/r"));
        ASSERT_TRUE(test::waitUntil([this] { return window->findChild<AnalysisView*>() != nullptr; }));
    }

    [[nodiscard]] QAbstractButton* button(const char* name) const { return test::buttonIn(*window, name); }

    void press(int key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(target(), Qt::Key(key), modifiers); }
    [[nodiscard]] QWidget* target() const
    {
        return window->focusWidget() != nullptr ? window->focusWidget() : window.get();
    }

    int choices = 0;
    std::unique_ptr<MainView> window;
};

TEST_F(MainViewTest, NeverShrinksBelowItsContent)
{
    window->resize(100, 100);
    EXPECT_TRUE(test::waitUntil([this] { return window->centralWidget()->size() == QSize(960, 640); }));
    press(Qt::Key_S, Qt::ControlModifier);
    press(Qt::Key_I, Qt::ControlModifier | Qt::AltModifier);
    const auto columns = window->findChildren<SideColumn*>();
    EXPECT_TRUE(test::waitUntil([&] { return std::ranges::all_of(columns, &SideColumn::isHidden); }));
    EXPECT_EQ(button("Inspector")->toolTip(), QStringLiteral("Show Inspector (⌥⌘I)"));
    window->resize(100, 100);
    EXPECT_TRUE(test::waitUntil([this] { return window->centralWidget()->size() == QSize(960, 640); }));
}

TEST_F(MainViewTest, KeepsTheWidthsOfTheColumns)
{
    auto* columns = window->findChild<WindowColumns*>();
    const auto widthsAt = [&](int width) {
        window->resize(width, 820);
        QApplication::processEvents();
        return columns->sizes();
    };
    const QList<int> wide = widthsAt(1280);
    EXPECT_EQ(wide[0], 240);
    EXPECT_EQ(wide[2], 280);
    const QList<int> narrow = widthsAt(1040);
    EXPECT_EQ(narrow[2], 240) << "the first to give way";
    EXPECT_LT(narrow[0], 240);
    EXPECT_EQ(narrow[1], AnalysisView::comfortableWidth);
    showTree();
    EXPECT_EQ(columns->sizes(), narrow) << "nothing jumps when the tree arrives";
    widthsAt(960);
    EXPECT_EQ(widthsAt(1280), wide);
    const auto drag = [](QSplitterHandle* handle, const QPoint& step) {
        QTest::mousePress(handle, Qt::LeftButton, {}, QPoint(2, 2));
        QTest::mouseMove(handle, QPoint(2, 2) + step);
        QTest::mouseRelease(handle, Qt::LeftButton, {}, QPoint(2, 2));
    };
    auto* analysis = window->findChild<AnalysisView*>();
    drag(analysis->handle(1), {0, -500});
    EXPECT_EQ(analysis->sizes()[1], 360);

    drag(columns->handle(1), {50, 0});
    const QList<int> dragged = columns->sizes();
    EXPECT_EQ(dragged[0], 290);
    widthsAt(960);
    EXPECT_EQ(widthsAt(1280), dragged);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(test::waitUntil([columns] { return columns->widget(0)->isHidden(); }));
    EXPECT_EQ(button("Disks Sidebar")->toolTip(), QStringLiteral("Show Disks Sidebar (⌥⌘S or ⌘S)"));
    widthsAt(1000);
    widthsAt(1280);
    press(Qt::Key_S, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_TRUE(test::waitUntil([&] { return columns->sizes() == dragged; }));
    EXPECT_EQ(button("Disks Sidebar")->toolTip(), QStringLiteral("Hide Disks Sidebar (⌥⌘S or ⌘S)"));
}

TEST_F(MainViewTest, OffersToCancelWhileItScans)
{
    const test::Gate gate;
    fileSystem->onListing = gate;
    state().scan(FileUrl::fromPath("/r"));
    ASSERT_TRUE(test::waitUntil([this] { return button("Cancel")->isVisible(); }));
    EXPECT_THAT(button("Cancel")->toolTip().toStdString(), IsEmpty());
    EXPECT_FALSE(button("Scan Folder...")->isVisible());
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(choices, 0) << "the shortcut goes with its button";
    QTest::mouseClick(button("Cancel"), Qt::LeftButton);
    EXPECT_FALSE(state().scanner().isScanning());
    EXPECT_TRUE(test::waitUntil([this] { return button("Scan Folder...")->isVisible(); }));
    state().scan(FileUrl::fromPath("/r"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(state().scanner().isScanning());
    gate.open();
}

TEST_F(MainViewTest, TellsOfFailuresWithoutTheInspector)
{
    const auto* banner = window->findChild<MessageBanner*>();
    state().loadHistoricalScan({});
    EXPECT_FALSE(banner->isVisible()) << "the inspector says it";
    press(Qt::Key_I, Qt::ControlModifier | Qt::AltModifier);
    state().loadHistoricalScan({});
    EXPECT_TRUE(banner->isVisible());
    EXPECT_THAT(test::labelsIn(*banner), ElementsAre("Failed to load historical scan tree cache."));
    const QAccessibleInterface& read = *QAccessible::queryAccessibleInterface(const_cast<MessageBanner*>(banner));
    EXPECT_EQ(read.role(), QAccessible::Notification);
    EXPECT_EQ(read.text(QAccessible::Name), QStringLiteral("Failed to load historical scan tree cache."));
    EXPECT_TRUE(window->rect().contains(banner->geometry()));
    EXPECT_TRUE(test::waitUntil([banner] { return banner->isHidden(); }));
}

TEST_F(MainViewTest, LeavesTheZoomedFolderWithEscape)
{
    showTree();
    press(Qt::Key_Escape);
    EXPECT_FALSE(state().canGoBack()) << "nothing to leave";
    state().zoomIn(test::nodeNamed(*state().currentRootNode(), "sub"));
    auto* picker = window->findChild<QComboBox*>();
    picker->showPopup();
    ASSERT_TRUE(test::waitUntilExposed(picker->view()->window()));
    QTest::keyClick(picker->view(), Qt::Key_Escape);
    EXPECT_FALSE(picker->view()->isVisible());
    EXPECT_EQ(test::nameOf(state().activeRootNode()), "sub") << "the key was the list's";
    press(Qt::Key_Escape);
    EXPECT_THAT(state().zoomStack(), IsEmpty());
}

TEST_F(MainViewTest, OpensTheSelectionWithSpaceUnlessSpaceMeansSomethingElse)
{
    press(Qt::Key_Space);
    EXPECT_THAT(workspace->calls, IsEmpty()) << "nothing is selected";
    showTree();
    window->setFocus();
    press(Qt::Key_Space);
    QTest::simulateEvent(target(), true, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
    EXPECT_THAT(workspace->calls, ElementsAre("open /r")) << "once, however long the key is held";
    QTest::simulateEvent(target(), true, Qt::Key_S, Qt::ControlModifier, {}, true);
    EXPECT_TRUE(window->isSidebarVisible()) << "nor do the toolbar's shortcuts repeat";

    QTest::mouseClick(button("Copy Absolute Path"), Qt::LeftButton);
    press(Qt::Key_Space);
    EXPECT_THAT(workspace->calls, ElementsAre("open /r", "copy /r", "open /r")) << "a click moves no focus";

    auto* field = new QLineEdit(window->centralWidget());
    auto* pushed = new QPushButton(window->centralWidget());
    int presses = 0;
    QObject::connect(pushed, &QPushButton::clicked, [&presses] { ++presses; });
    field->show();
    pushed->show();
    field->setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(field->text(), QStringLiteral(" "));
    pushed->setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(workspace->calls.size(), 3U);
}

TEST_F(MainViewTest, ShowsNoNameThatMisleads)
{
    const std::string root = "s\u202Eub";
    const std::string name = "photo\u202Egpj\n.exe";
    fileSystem->addFile("/r/" + root + "/" + name, 4'000);
    state().scan(FileUrl::fromPath("/r/" + root));
    ASSERT_TRUE(test::waitUntil([this] { return window->findChild<AnalysisView*>() != nullptr; }));
    state().zoomIn(*state().currentRootNode());
    state().setSelectedNode(test::nodeNamed(*state().currentRootNode(), name));
    state().setSearchText(QStringLiteral("exe"));
    QCoreApplication::processEvents();
    QStringList texts;
    for (const QAction* action :
         test::openMenu(*window->findChild<TreemapCanvas*>(), QContextMenuEvent::Keyboard)->actions()) {
        texts.append(action->text());
    }
    collectTexts(QAccessible::queryAccessibleInterface(window.get()), texts);
    EXPECT_THAT(texts.filter(QStringLiteral("\u202E")), IsEmpty());
    EXPECT_THAT(texts.filter(QStringLiteral("\n")), IsEmpty());
    EXPECT_GE(texts.filter(QStringLiteral("photo\uFFFDgpj\uFFFD.exe")).size(), 7)
        << "menu, treemap, header, result with its tooltip, inspector and path";
    EXPECT_GE(texts.filter(QStringLiteral("s\uFFFDub")).size(), 4)
        << "breadcrumb, treemap, recent scan with its tooltip";
}

TEST_F(MainViewTest, PassesTheFocusFromLeftToRight)
{
    showTree();
    window->setFocus();
    std::vector<std::string> stops;
    for (int step = 0; step < 13; ++step) {
        press(Qt::Key_Tab);
        stops.push_back(QAccessible::queryAccessibleInterface(target())->text(QAccessible::Name).toStdString());
    }
    EXPECT_THAT(stops, ElementsAre("Disks Sidebar", "Scan Folder...", "Inspector", "Macintosh HD", "Home",
                                   "Recent Scans", "Treemap", "Search file or folder name...", "All Categories",
                                   "Any Size", "Full Path", "Reveal in Finder", "Open File"));
}

TEST_F(MainViewTest, TakesTheFocusFromWhatGoes)
{
    showTree();
    window->findChild<TreemapCanvas*>()->setFocus();
    state().scan(FileUrl::fromPath("/r"));
    ASSERT_TRUE(test::waitUntil([this] { return window->findChild<OnboardingView*>()->isVisible(); }));
    ASSERT_TRUE(test::waitUntil([this] { return state().currentRootNode().has_value(); }));
    press(Qt::Key_Space);
    EXPECT_THAT(workspace->calls, ElementsAre("open /r"));
    EXPECT_TRUE(window->isSidebarVisible()) << "the space bar is not a button's";
}

} // namespace
} // namespace morlaine
