#include "UI/Views/Search/SearchFilterView.h"

#include "Support/ModelFixture.h"
#include "Support/TreeText.h"
#include "Support/Widgets.h"
#include "UI/Views/Search/SearchFilterContent.h"
#include "UI/Views/Search/SearchResultDelegate.h"
#include "UI/Views/Search/SearchResultsModel.h"
#include "UI/Widgets/UniformListView.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QToolTip>

#include <gmock/gmock.h>

#include <csignal>

namespace morlaine {
namespace {

using test::choose;
using test::ModelFixture;
using test::nodeNamed;
using test::openMenu;
using test::treeFromText;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view tree = R"(root/
  Photos/
    beach.jpg 20971520
    forest.jpg 400
  film.mov 3000000000
  notes.txt 7)";

/// The panel in its own window.
class SearchFilterViewTest : public testing::Test {
protected:
    SearchFilterViewTest()
    {
        fixture.show(tree);
        open();
    }

    void open()
    {
        view = std::make_unique<SearchFilterView>(*fixture.model);
        view->resize(320, 260);
        view->show();
        view->activateWindow();
    }

    [[nodiscard]] MainViewModel& model() const { return *fixture.model; }
    [[nodiscard]] QLineEdit& field() const { return *view->findChild<QLineEdit*>(); }
    [[nodiscard]] QToolButton& clearButton() const { return *view->findChild<QToolButton*>(); }
    [[nodiscard]] UniformListView& list() const { return *view->findChild<UniformListView*>(); }
    [[nodiscard]] QComboBox& picker(int place) const { return *view->findChildren<QComboBox*>().at(place); }

    [[nodiscard]] std::string selected() const { return test::nameOf(model().selectedNode()); }

    /// The names in the list, or the texts shown instead.
    [[nodiscard]] std::vector<std::string> content() const
    {
        std::vector<std::string> texts = test::labelsIn(*view);
        for (int row = 0; list().isVisible() && row < list().model()->rowCount(); ++row) {
            texts.push_back(list().model()->index(row, 0).data().toString().toStdString());
        }
        return texts;
    }

    [[nodiscard]] bool waitForContent(const std::vector<std::string>& expected) const
    {
        return test::waitUntil([&] { return content() == expected; });
    }

    void search(const QString& text)
    {
        field().setFocus();
        QTest::keyClicks(&field(), text);
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QPoint middleOf(int row) const { return list().visualRect(list().model()->index(row, 0)).center(); }

    ModelFixture fixture;
    std::unique_ptr<SearchFilterView> view;

    const std::vector<std::string> idle{"Search & Filter Scan",
                                        "Type a name or pick a type/size filter above to locate large files."};
    const std::vector<std::string> nothing{"No matches found"};
};

TEST_F(SearchFilterViewTest, EveryKeystrokeSearchesAndNoneIsLost)
{
    EXPECT_EQ(content(), idle);
    EXPECT_FALSE(clearButton().isVisible());

    field().setFocus();
    std::string typed;
    for (const char letter : std::string("photos/FOREST")) {
        QTest::keyClick(&field(), letter);
        typed += letter;
        EXPECT_EQ(model().searchText().toStdString(), typed);
        if (typed.size() % 3 == 0) {
            QCoreApplication::processEvents();
        }
    }
    EXPECT_TRUE(waitForContent({"forest.jpg"}));
    EXPECT_EQ(field().text().toStdString(), typed);
    EXPECT_TRUE(clearButton().isVisible());

    QTest::keyClick(&field(), Qt::Key_Home);
    QTest::keyClick(&field(), 'x');
    QCoreApplication::processEvents();
    EXPECT_EQ(field().cursorPosition(), 1);
    EXPECT_TRUE(waitForContent(nothing));

    QTest::mouseClick(&clearButton(), Qt::LeftButton);
    EXPECT_EQ(model().searchText(), QString());
    EXPECT_TRUE(waitForContent(idle));
    EXPECT_FALSE(clearButton().isVisible());
    EXPECT_TRUE(field().hasFocus());
    field().setText(QStringLiteral("forest")); // as assistive programs do
    EXPECT_TRUE(waitForContent({"forest.jpg"}));
}

TEST_F(SearchFilterViewTest, PickersFilterAloneAndTogether)
{
    const auto nameOfPicker = [this](int place) {
        const auto labels = QAccessible::queryAccessibleInterface(&picker(place))->relations(QAccessible::Label);
        return labels.isEmpty() ? QString() : labels.first().first->text(QAccessible::Name);
    };
    EXPECT_EQ(nameOfPicker(0), QStringLiteral("Type:"));
    EXPECT_EQ(nameOfPicker(1), QStringLiteral("Min Size"));
    picker(0).setFocus();
    QTest::keyClick(&picker(0), Qt::Key_Down);
    EXPECT_EQ(model().selectedCategory(), FileCategory::image);
    EXPECT_TRUE(waitForContent({"beach.jpg", "forest.jpg"}));
    picker(1).setFocus();
    QTest::keyClick(&picker(1), Qt::Key_Down);
    EXPECT_EQ(view->selectedSizeFilterIndex(), 1);
    EXPECT_EQ(model().minSizeFilter(), 10'485'760);
    EXPECT_TRUE(waitForContent({"beach.jpg"}));
    QTest::keyClick(&picker(0), Qt::Key_Home);
    QTest::keyClick(&picker(1), Qt::Key_End);
    EXPECT_EQ(model().minSizeFilter(), 10'737'418'240);
    EXPECT_TRUE(waitForContent(nothing));
    QTest::keyClick(&picker(1), Qt::Key_Home);
    EXPECT_EQ(model().minSizeFilter(), std::nullopt);
    EXPECT_TRUE(waitForContent(idle));
}

TEST_F(SearchFilterViewTest, ANewPanelShowsTextAndTypeAndWritesNothing)
{
    model().setSearchText(QStringLiteral("o"));
    model().setSelectedCategory(FileCategory::video);
    model().setMinSizeFilter(104'857'600);
    QSignalSpy announced(&model(), &MainViewModel::objectWillChange);
    open();
    EXPECT_EQ(field().text(), QStringLiteral("o"));
    EXPECT_EQ(picker(0).currentText(), QStringLiteral("Videos"));
    EXPECT_EQ(view->selectedSizeFilterIndex(), 0);
    EXPECT_TRUE(waitForContent({"film.mov"}));
    EXPECT_EQ(announced.count(), 0);
    EXPECT_EQ(model().minSizeFilter(), 104'857'600);

    model().setSelectedCategory(std::nullopt);
    model().setSearchText(QStringLiteral("beach"));
    EXPECT_TRUE(test::waitUntil([&] { return field().text() == QStringLiteral("beach"); }));
    EXPECT_EQ(picker(0).currentIndex(), 0);
}

TEST_F(SearchFilterViewTest, ReturnSelectsTheFirstResultAndFocusTheText)
{
    search(QStringLiteral("nowhere"));
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_EQ(selected(), "root");

    list().setFocus();
    view->focusSearchField();
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(field().selectedText(), QStringLiteral("nowhere"));
    // The list is still empty when the key arrives.
    QTest::keyClicks(&field(), QStringLiteral("jpg"));
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_EQ(selected(), "beach.jpg");
    EXPECT_EQ(list().currentIndex().row(), 0);
}

TEST_F(SearchFilterViewTest, ArrowsLeadFromTheFieldThroughTheListAndBack)
{
    QTest::keyClick(&field(), Qt::Key_Down);
    search(QStringLiteral("photos"));
    EXPECT_EQ(selected(), "root");
    QTest::keyClick(&field(), Qt::Key_Down);
    EXPECT_TRUE(list().hasFocus());
    EXPECT_EQ(selected(), "Photos");
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(selected(), "beach.jpg");
    QTest::keyClick(&list(), Qt::Key_Home);
    QTest::keyClick(&list(), Qt::Key_Up);
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(selected(), "Photos");
}

TEST_F(SearchFilterViewTest, AClickSelectsAndNewResultsSelectNothing)
{
    search(QStringLiteral("o"));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, middleOf(2));
    EXPECT_EQ(selected(), "beach.jpg");
    QCoreApplication::processEvents();
    EXPECT_EQ(list().selectionModel()->selectedIndexes().size(), 1);

    model().setSelectedNode(nodeNamed(*model().currentRootNode(), "film.mov"));
    EXPECT_TRUE(test::waitUntil([&] { return !list().selectionModel()->hasSelection(); }));
    list().scrollToBottom();
    EXPECT_GT(list().verticalScrollBar()->value(), 0);
    QTest::keyClick(&field(), 't');
    EXPECT_TRUE(test::waitUntil([&] { return list().verticalScrollBar()->value() == 0; }));
    EXPECT_FALSE(list().currentIndex().isValid());
    model().setSearchText(QStringLiteral("notes"));
    EXPECT_TRUE(waitForContent({"notes.txt"}));
    list().setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    EXPECT_EQ(selected(), "film.mov");
}

TEST_F(SearchFilterViewTest, TheRowMenuActsOnItsRow)
{
    search(QStringLiteral("photos"));
    for (int entry = 0; entry < 4; ++entry) {
        QTest::mouseClick(list().viewport(), Qt::RightButton, {}, middleOf(1));
        choose(*openMenu(*list().viewport(), QContextMenuEvent::Mouse, middleOf(1)), entry);
    }
    const std::string path = nodeNamed(*model().currentRootNode(), "beach.jpg").url().path();
    EXPECT_THAT(fixture.workspace->calls, ElementsAre("select " + path + " in \"\"", "open " + path, "copy " + path));
    EXPECT_THAT(model().zoomStack(), IsEmpty());
    EXPECT_EQ(selected(), "root");

    list().setFocus();
    list().setCurrentIndex(list().model()->index(0, 0));
    choose(*openMenu(list(), QContextMenuEvent::Keyboard), 3);
    ASSERT_EQ(model().zoomStack().size(), 1U);
    EXPECT_EQ(model().zoomStack().front().name(), "Photos");
}

TEST(SizeFilterDeathTest, EndsTheProgramForAnEntryThatDoesNotExist)
{
    EXPECT_EXIT((void)sizeFilterBytes(sizeFilters.size()), testing::KilledBySignal(SIGABRT), "^$");
    EXPECT_EXIT((void)sizeFilterBytes(-1), testing::KilledBySignal(SIGABRT), "^$");
}

TEST(SearchResultsTest, AMillionRowsAppearAndTheLastIsInReach)
{
    constexpr int count = 1'000'000;
    const FileNode root = test::folderOfFiles(count);

    SearchResultsModel rows;
    UniformListView list;
    list.setItemDelegate(new SearchResultDelegate(rows, &list));
    list.setModel(&rows);
    list.resize(300, 200);
    list.show();
    rows.setResults(SearchIndex(root).search(QStringLiteral("ROOT"), std::nullopt, std::nullopt, std::nullopt));
    EXPECT_EQ(rows.rowCount(), count + 1);
    ASSERT_TRUE(test::waitUntil([&] { return list.verticalScrollBar()->maximum() > count; }));

    QTest::keyClick(&list, Qt::Key_End);
    EXPECT_EQ(list.currentIndex().data().toString(), QStringLiteral("999999"));
    const QRect last = list.visualRect(list.currentIndex());
    EXPECT_EQ(last.bottom(), list.viewport()->rect().bottom());
    EXPECT_EQ(list.indexAt(last.center()), list.currentIndex());
    QTest::keyClick(&list, Qt::Key_PageUp);
    EXPECT_EQ(list.currentIndex().row(), count - (200 / last.height() - 1));
}

TEST(SearchResultsModelTest, KeepsTheRulesOfModelsAndSaysItsRows)
{
    SearchResultsModel rows;
    const QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const FileNode root = treeFromText("root/\n  <b>.txt 1000\n  sub/", "/home");
    const SearchIndex index(root);
    rows.setResults(index.search({}, std::nullopt, std::nullopt, std::nullopt));
    ASSERT_EQ(rows.rowCount(), 3);
    const QModelIndex file = rows.index(1);
    EXPECT_EQ(file.data(Qt::AccessibleTextRole).toString(), QStringLiteral("<b>.txt, /home/root/<b>.txt, 1 KB"));
    QToolTip::showText({}, file.data(Qt::ToolTipRole).toString());
    const auto* tip = qobject_cast<QLabel*>(QApplication::topLevelAt(QPoint(20, 30)));
    ASSERT_TRUE(tip);
    EXPECT_GT(tip->width(), tip->fontMetrics().horizontalAdvance(QStringLiteral("/home/root/<b>.txt")))
        << "in one line";
    QToolTip::hideText();
    rows.setResults({});
    EXPECT_EQ(rows.rowCount(), 0);
}

} // namespace
} // namespace morlaine
