#include "UI/Views/Treemap/TreemapView.h"

#include "Support/ModelFixture.h"
#include "Support/TreeText.h"
#include "Support/Widgets.h"
#include "UI/Styles/Conversions.h"
#include "UI/Views/Treemap/TreemapHeader.h"
#include "UI/Views/Treemap/TreemapMenu.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QToolTip>

#include <gmock/gmock.h>

#include <cmath>

namespace morlaine {

namespace {

using test::buttonIn;
using test::choose;
using test::nameOf;
using test::openMenu;
using testing::ElementsAre;

constexpr std::string_view tree = R"(
root/
  big/
    inner/
      deep 300
      small 100
    notes.txt 400
  hit.mp3 600
  rest 200
)";

} // namespace

class TreemapViewTest : public testing::Test, protected test::ModelFixture {
protected:
    TreemapViewTest()
    {
        m_view.resize(600, 440);
        m_view.show();
        EXPECT_TRUE(test::waitUntilExposed(&m_view));
    }

    void showTree(std::string_view text = tree)
    {
        show(text);
        settle();
    }

    /// Until the view has read the model and painted.
    void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    void zoomIn(std::string_view name)
    {
        model->zoomIn(node(name));
        settle();
    }

    FileNode node(std::string_view name) const { return test::nodeNamed(*model->currentRootNode(), name); }

    QRectF rectNamed(std::string_view name) const
    {
        for (const TreemapRect& item : m_view.computedRects()) {
            if (item.node.name() == name) {
                return toQRectF(item.rect);
            }
        }
        return {};
    }

    QPoint centerOf(std::string_view name) const { return rectNamed(name).center().toPoint(); }
    QPoint cornerOf(std::string_view name) const { return rectNamed(name).topLeft().toPoint() + QPoint(1, 1); }

    void moveTo(const QPoint& point)
    {
        // A move to the current position would not be an event.
        QTest::mouseMove(m_canvas, point + QPoint(1, 1));
        QTest::mouseMove(m_canvas, point);
        settle();
    }

    /// Sends the event of a pointer that leaves. Moving the pointer does not work: while menus open and close, this
    /// platform loses track of the widget under it.
    void leaveCanvas()
    {
        settle();
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(m_canvas, &leave);
        ASSERT_FALSE(m_view.hoveredRect());
    }

    void click(const QPoint& point, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(m_canvas, button, {}, point);
        settle();
    }

    void doubleClick(const QPoint& point)
    {
        QTest::mouseClick(m_canvas, Qt::LeftButton, {}, point);
        QTest::mouseDClick(m_canvas, Qt::LeftButton, {}, point);
        settle();
    }

    std::string selected() const { return nameOf(model->selectedNode()); }
    std::string active() const { return nameOf(model->activeRootNode()); }
    QString info() const { return m_view.findChild<TreemapInfo*>()->text(); }

    QColor pixel(const QPoint& point) const { return m_canvas->grab().toImage().pixelColor(point); }

    static std::string textsOf(const QMenu& menu)
    {
        std::string texts;
        for (const QAction* action : menu.actions()) {
            texts += action->text().toStdString() + "|";
        }
        return texts;
    }

    TreemapView m_view{*model};
    TreemapCanvas* m_canvas = m_view.findChild<TreemapCanvas*>();
};

TEST_F(TreemapViewTest, SaysWhyThereIsNothingToSee)
{
    EXPECT_EQ(m_canvas->text(), QStringLiteral("Select a folder to start scanning disk space"));
    const QImage withoutFolder = m_canvas->grab().toImage();
    click({300, 200});
    doubleClick({300, 200});
    EXPECT_EQ(selected(), "none");

    showTree("root/\n  empty 0\n");
    EXPECT_EQ(m_canvas->text(), QStringLiteral("Calculating Layout..."));
    EXPECT_NE(m_canvas->grab().toImage(), withoutFolder);
    EXPECT_EQ(m_canvas->basePaintCount(), 0);
}

TEST_F(TreemapViewTest, LaysOutAgainForAnotherSizeAndAnotherFolderOnly)
{
    showTree();
    const int first = m_canvas->layoutNumber();
    const QRectF big = rectNamed("big");
    EXPECT_EQ(big.height(), m_canvas->height());
    model->setSearchText(QStringLiteral("hit"));
    model->setSelectedNode(node("rest"));
    settle();
    EXPECT_EQ(m_canvas->layoutNumber(), first);

    for (const QSizeF& tooSmall : {QSizeF(20, 300), QSizeF(300, 20)}) {
        m_view.recalculateLayout(tooSmall);
        EXPECT_EQ(rectNamed("big"), big);
    }
    m_view.recalculateLayout({20.5, 20.5});
    EXPECT_EQ(rectNamed("big").height(), 20.5);

    m_view.resize(700, 500);
    settle();
    EXPECT_EQ(rectNamed("big").height(), m_canvas->height());
    zoomIn("big");
    EXPECT_EQ(rectNamed("inner").height(), m_canvas->height());

    model->scan(FileUrl::fromPath("/missing"));
    settle();
    EXPECT_TRUE(m_view.computedRects().empty());
}

TEST_F(TreemapViewTest, EndsWithTheNewestSizeOfALargePicture)
{
    std::string text = "root/\n";
    for (int number = 0; number < 60'000; ++number) {
        text += "  " + std::to_string(number) + " 9\n";
    }
    showTree(text);
    for (int step = 0; step < 20; ++step) {
        m_view.resize(600 + 20 * step, 440 + 10 * step);
        settle();
    }
    const auto isOfThisSize = [this] {
        const TreemapRect last = m_view.computedRects()[m_view.computedRects().size() - 1];
        return std::abs(last.rect.x + last.rect.width - m_canvas->width()) < 1e-6 &&
               std::abs(last.rect.y + last.rect.height - m_canvas->height()) < 1e-6;
    };
    EXPECT_TRUE(test::waitUntil([&] { return isOfThisSize() && !m_canvas->isPainting(); }));
}

TEST_F(TreemapViewTest, SelectsWithAClickAndZoomsWithTwo)
{
    showTree();
    EXPECT_EQ(selected(), "root");
    click(centerOf("hit.mp3"));
    EXPECT_EQ(selected(), "hit.mp3");
    click(cornerOf("inner"));
    EXPECT_EQ(selected(), "big") << "the outermost folder";

    QTest::mousePress(m_canvas, Qt::LeftButton, {}, centerOf("rest"));
    QTest::mouseRelease(m_canvas, Qt::LeftButton, {}, centerOf("hit.mp3"));
    click(centerOf("rest"), Qt::RightButton);
    EXPECT_EQ(selected(), "big") << "neither dragging nor another button is a click";

    doubleClick(centerOf("hit.mp3"));
    EXPECT_EQ(selected(), "hit.mp3") << "by the first click";
    EXPECT_EQ(active(), "root");

    doubleClick(cornerOf("big"));
    EXPECT_EQ(active(), "big");
}

TEST_F(TreemapViewTest, FollowsThePointerWithoutPaintingTheRectanglesAgain)
{
    showTree();
    const QColor plain = pixel(centerOf("rest"));
    const int paintedBefore = m_canvas->basePaintCount();

    moveTo(centerOf("rest"));
    ASSERT_TRUE(m_view.hoveredRect());
    EXPECT_EQ(info(), QStringLiteral("rest (200 bytes)"));
    EXPECT_GT(pixel(centerOf("rest")).lightness(), plain.lightness());
    EXPECT_EQ(pixel(rectNamed("rest").toRect().bottomRight() - QPoint(3, 3)), pixel(centerOf("rest"))) << "a thin line";
    moveTo(centerOf("hit.mp3"));
    EXPECT_EQ(info(), QStringLiteral("hit.mp3 (600 bytes)"));
    EXPECT_EQ(pixel(centerOf("rest")), plain);

    click(centerOf("hit.mp3"));
    moveTo(centerOf("rest"));
    const QColor selectedOnly = pixel(centerOf("hit.mp3"));
    moveTo(centerOf("hit.mp3"));
    EXPECT_EQ(pixel(centerOf("hit.mp3")), selectedOnly) << "what is selected is not washed white";

    leaveCanvas();
    model->setSelectedNode(std::nullopt);
    settle();
    EXPECT_FALSE(m_view.hoveredRect());
    EXPECT_EQ(info(), QString());
    EXPECT_EQ(m_canvas->basePaintCount(), paintedBefore);

    model->setSearchText(QStringLiteral("hit"));
    settle();
    m_canvas->grab();
    EXPECT_EQ(m_canvas->basePaintCount(), paintedBefore + 1);
    EXPECT_LT(pixel(centerOf("rest")).lightness(), plain.lightness());
}

TEST_F(TreemapViewTest, TellsOfTheInnermostItemWhereThePointerRests)
{
    showTree();
    const auto toolTipAt = [this](const QPoint& point) {
        QHelpEvent help(QEvent::ToolTip, point, m_canvas->mapToGlobal(point));
        QCoreApplication::sendEvent(m_canvas, &help);
        return QToolTip::text();
    };
    EXPECT_EQ(toolTipAt(cornerOf("big")), QStringLiteral("big\n800 bytes"));
    EXPECT_EQ(toolTipAt(cornerOf("inner")), QStringLiteral("big/inner\n400 bytes"));
    EXPECT_EQ(toolTipAt(centerOf("deep")), QStringLiteral("big/inner/deep\n300 bytes"));
    EXPECT_EQ(selected() + info().toStdString(), "rootroot (2 KB)");
    zoomIn("big");
    EXPECT_EQ(toolTipAt(centerOf("deep")), QStringLiteral("inner/deep\n300 bytes")) << "below the folder that is shown";
}

TEST_F(TreemapViewTest, TheMarkUnderThePointerGoesWithItsItemWhenTheSizeChanges)
{
    showTree();
    moveTo(centerOf("rest"));
    m_view.resize(900, 640);
    settle();
    ASSERT_TRUE(m_view.hoveredRect());
    EXPECT_EQ(toQRectF(m_view.hoveredRect()->rect), rectNamed("rest"));
    const QColor marked = pixel(centerOf("rest"));
    leaveCanvas();
    EXPECT_LT(pixel(centerOf("rest")).lightness(), marked.lightness());
}

TEST_F(TreemapViewTest, LeadsBackAlongThePath)
{
    showTree();
    EXPECT_FALSE(buttonIn(m_view, "Zoom to root")->isEnabled());
    zoomIn("big");
    zoomIn("inner");
    QTest::mouseClick(buttonIn(m_view, "big"), Qt::LeftButton);
    settle();
    EXPECT_EQ(active() + " " + selected(), "big big");
    EXPECT_EQ(buttonIn(m_view, "inner"), nullptr);

    QAbstractButton* const house = buttonIn(m_view, "Zoom to root");
    ASSERT_TRUE(house->isEnabled());
    house->setFocus();
    QTest::keyClick(house, Qt::Key_Space);
    settle();
    EXPECT_EQ(active() + " " + selected(), "root root");
    EXPECT_FALSE(house->isEnabled());
}

TEST_F(TreemapViewTest, OffersAMenuForWhatIsUnderThePointerElseForWhatIsSelected)
{
    EXPECT_EQ(openMenu(*m_canvas, QContextMenuEvent::Keyboard)->actions()[0]->text(),
              QStringLiteral("No element selected"));
    QApplication::activePopupWidget()->close();
    showTree();

    moveTo(centerOf("hit.mp3"));
    QMenu* const menu = openMenu(*m_canvas, QContextMenuEvent::Mouse, centerOf("hit.mp3"));
    EXPECT_EQ(textsOf(*menu), "hit.mp3||Reveal in Finder|Open File / Folder|Copy Path|");
    moveTo(centerOf("rest")); // the target is already fixed
    choose(*menu, 2);
    EXPECT_THAT(workspace->calls, ElementsAre("select /root/hit.mp3 in \"\""));
    EXPECT_EQ(selected(), "hit.mp3");

    leaveCanvas();
    model->setSelectedNode(node("rest"));
    settle();
    choose(*openMenu(*m_canvas, QContextMenuEvent::Keyboard), 4);
    EXPECT_EQ(workspace->calls.back(), "copy /root/rest");

    model->setSelectedNode(node("big"));
    settle();
    leaveCanvas();
    QMenu* const folderMenu = openMenu(*m_canvas, QContextMenuEvent::Keyboard);
    EXPECT_EQ(textsOf(*folderMenu), "big||Zoom In|Reveal in Finder|Open File / Folder|Copy Path|");
    choose(*folderMenu, 2);
    EXPECT_EQ(active(), "big");
}

TEST_F(TreemapViewTest, ShowsTheFocusAndLeavesShortcutsToTheWindow)
{
    showTree();
    m_view.activateWindow();
    ASSERT_TRUE(test::waitUntil([this] { return m_view.isActiveWindow(); }));
    m_canvas->clearFocus();
    const QColor plain = pixel({0, 0});
    m_canvas->setFocus(Qt::TabFocusReason);
    EXPECT_NE(pixel({0, 0}), plain);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Escape}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(m_canvas, &event);
        EXPECT_FALSE(event.isAccepted());
    }
}

TEST_F(TreemapViewTest, MovesTheSelectionByKey)
{
    showTree();
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(m_canvas, key);
        settle();
        return selected();
    };
    const std::string largest = press(Qt::Key_Right);
    EXPECT_EQ(press(Qt::Key_Home), largest) << "where nothing of the picture is selected, the largest comes first";
    std::string way;
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_Right, Qt::Key_Left, Qt::Key_Down, Qt::Key_End}) {
        way += press(key) + ' ';
    }
    EXPECT_EQ(way, "notes.txt deep small deep notes.txt small ");
    click(cornerOf("big"));
    press(Qt::Key_Return);
    EXPECT_EQ(active(), "big");
    press(Qt::Key_Return);
    EXPECT_THAT(model->zoomStack(), testing::SizeIs(1)) << "the folder that is shown is no rectangle";
    press(Qt::Key_Backspace);
    EXPECT_NE(active(), "big");
}

TEST_F(TreemapViewTest, TellsAssistiveProgramsEveryRectangleToPointAt)
{
    showTree();
    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(m_canvas);
    ASSERT_EQ(list->childCount(), static_cast<int>(m_view.computedRects().size()));
    EXPECT_EQ(list->role(), QAccessible::List);
    for (int index = 0; index < list->childCount(); ++index) {
        const TreemapRect rect = m_view.computedRects()[static_cast<std::size_t>(index)];
        QAccessibleInterface* const item = list->child(index);
        EXPECT_EQ(item->text(QAccessible::Name).toStdString(), rect.node.name());
        EXPECT_EQ(item->text(QAccessible::Value).toStdString(), rect.node.formattedSize());
        EXPECT_EQ(item->role(), QAccessible::ListItem);
        EXPECT_EQ(list->indexOfChild(item), index);
        EXPECT_EQ(item->parent(), list);
        EXPECT_TRUE(item->rect().contains(m_canvas->mapToGlobal(toQRectF(rect.rect).center().toPoint())));
        EXPECT_EQ(list->child(index), item) << "asked again";
    }
    const QPoint rest = m_canvas->mapToGlobal(centerOf("rest"));
    QAccessibleInterface* const item = list->childAt(rest.x(), rest.y());
    ASSERT_NE(item, nullptr);
    EXPECT_FALSE(item->state().selected);
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_EQ(selected(), "rest");
    EXPECT_TRUE(item->state().selected);

    zoomIn("big");
    EXPECT_FALSE(item->isValid());
    EXPECT_EQ(list->childCount(), static_cast<int>(m_view.computedRects().size()));

    showTree("root/\n  big 1000000\n  speck 1\n  half 400000\n");
    ASSERT_EQ(m_view.computedRects().size(), 3U);
    ASSERT_EQ(list->childCount(), 2);
    EXPECT_EQ(list->child(1)->text(QAccessible::Name), QStringLiteral("half"));
    EXPECT_EQ(list->indexOfChild(list->child(1)), 1);
}

} // namespace morlaine
