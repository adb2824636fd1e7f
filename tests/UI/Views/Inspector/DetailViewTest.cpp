#include "UI/Views/Inspector/DetailView.h"

#include "Support/Gate.h"
#include "Support/ModelFixture.h"
#include "Support/TreeText.h"
#include "Support/Widgets.h"
#include "UI/Views/Inspector/SelectableText.h"

#include <QClipboard>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <gmock/gmock.h>

#include <algorithm>

namespace morlaine {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAre;

constexpr auto tree = "root/\n  Pictures/\n    a.jpg 6000\n  film.mp4 2000\n";

class DetailViewTest : public testing::Test, protected test::ModelFixture {
protected:
    DetailViewTest() { open({280, 500}); }

    void open(QSize size)
    {
        view = std::make_unique<DetailView>(*model);
        view->resize(size);
        view->show();
        EXPECT_TRUE(test::waitUntilExposed(view.get()));
    }

    /// All visible texts of the pane.
    [[nodiscard]] std::vector<std::string> texts() const
    {
        std::vector<std::string> found = test::labelsIn(*view);
        std::erase(found, "");
        const auto add = [&found](const QWidget& widget, const QString& text) {
            if (widget.isVisible()) {
                found.push_back(text.toStdString());
            }
        };
        for (const QPushButton* button : view->findChildren<QPushButton*>()) {
            add(*button, button->text());
        }
        for (const QTextEdit* text : view->findChildren<QTextEdit*>()) {
            add(*text, text->toPlainText());
        }
        return found;
    }

    [[nodiscard]] bool waitForText(const std::string& text) const
    {
        return test::waitUntil([&] { return std::ranges::count(texts(), text) == 1; });
    }

    void select(std::string_view name) { model->setSelectedNode(test::nodeNamed(*model->currentRootNode(), name)); }

    void click(const char* label) const { QTest::mouseClick(test::buttonIn(*view, label), Qt::LeftButton); }

    [[nodiscard]] SelectableText& path() const { return *view->findChild<SelectableText*>(); }

    std::unique_ptr<DetailView> view;
};

TEST_F(DetailViewTest, ShowsTheSelectedNode)
{
    show(tree);
    ASSERT_TRUE(waitForText("8 KB"));
    EXPECT_THAT(texts(),
                UnorderedElementsAre("root", "Folder", "Size", "8 KB", "Share of Scan", "100.00%", "Total Items",
                                     "2 files, 2 folders", "Full Path", "/root", "Reveal in Finder", "Open File",
                                     "Copy Absolute Path", "Zoom Into Folder"));
    select("a.jpg");
    ASSERT_TRUE(waitForText("a.jpg"));
    EXPECT_THAT(texts(),
                UnorderedElementsAre("a.jpg", "File", "Size", "6 KB", "Share of Scan", "75.00%", "Full Path",
                                     "/root/Pictures/a.jpg", "Reveal in Finder", "Open File", "Copy Absolute Path"));
    model->setSelectedNode(std::nullopt);
    EXPECT_TRUE(waitForText("No item selected"));
}

TEST_F(DetailViewTest, ActsOnTheSelectedNode)
{
    show(tree);
    select("Pictures");
    ASSERT_TRUE(waitForText("Pictures"));
    click("Reveal in Finder");
    click("Open File");
    click("Copy Absolute Path");
    EXPECT_THAT(workspace->calls,
                ElementsAre(StartsWith("select /root/Pictures in"), "open /root/Pictures", "copy /root/Pictures"));
    click("Zoom Into Folder");
    EXPECT_EQ(model->activeRootNode()->name(), "Pictures");
}

TEST_F(DetailViewTest, KeepsASelectionInThePathThatTheMouseMade)
{
    show(tree);
    select("a.jpg");
    ASSERT_TRUE(waitForText("/root/Pictures/a.jpg"));
    QWidget* text = path().viewport();
    const int middle = path().fontMetrics().height() / 2;
    QTest::mousePress(text, Qt::LeftButton, {}, {1, middle});
    QTest::mouseMove(text, {60, middle});
    QTest::mouseMove(text, {text->width() - 2, middle});
    QTest::mouseRelease(text, Qt::LeftButton, {}, {text->width() - 2, middle});
    EXPECT_EQ(path().textCursor().selectedText(), QStringLiteral("/root/Pictures/a.jpg"));

    model->setSearchText(QStringLiteral("a"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(path().textCursor().hasSelection()) << "what changes elsewhere leaves it alone";
    select("film.mp4");
    ASSERT_TRUE(waitForText("/root/film.mp4"));
    EXPECT_FALSE(path().textCursor().hasSelection());
}

TEST_F(DetailViewTest, CopiesTheExactPathThatItShowsInAReadableForm)
{
    const std::string name = "a\u00A0b\u202E\u05D0.jpg";
    show("root/\n  " + name + " 6000\n");
    select(name);
    ASSERT_TRUE(waitForText("/\u200Eroot/\u200Ea b\uFFFD\u05D0.jpg"));
    path().selectAll();
    path().copy();
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "/root/" + name);
}

TEST_F(DetailViewTest, FitsANarrowAndLowPane)
{
    const std::string name(200, 'w');
    show("root/\n  " + name + "/\n    " + name + ".jpg 6000\n");
    select(name + ".jpg");
    const QFont before = QApplication::font();
    constexpr QSize spacious(420, 900);
    for (const auto& [size, points] : {std::pair(QSize(240, 140), 10), {spacious, 10}, {QSize(240, 640), 24}}) {
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
        open(size);
        const auto* area = qobject_cast<QScrollArea*>(view->currentWidget());
        ASSERT_TRUE(test::waitUntil([&] { return area->widget()->width() == area->viewport()->width(); }));
        EXPECT_EQ(area->verticalScrollBar()->maximum() > 0, size != spacious);
        for (const QWidget* child : area->widget()->findChildren<QWidget*>()) {
            EXPECT_TRUE(!child->isVisible() || child->parentWidget()->rect().contains(child->geometry()))
                << points << ' ' << child->metaObject()->className();
        }
        EXPECT_GE(path().height(), path().document()->size().height()) << "the whole path is seen";
        EXPECT_LE(path().document()->idealWidth(), path().viewport()->width());
    }
    QApplication::setFont(before);
}

/// A scan of the folder /r that stops at two gates.
class DetailViewScanTest : public DetailViewTest {
protected:
    DetailViewScanTest()
    {
        fileSystem->addFile("/r/a", 3);
        fileSystem->addFile("/r/two/b", 9);
        fileSystem->onListing = [first = first, second = second](const std::string& path) {
            if (path == "/r") {
                first.pass();
            } else if (path == "/r/two") {
                second.pass();
            }
        };
        model->scan(FileUrl::fromPath("/r"));
        first.waitForArrival();
    }
    ~DetailViewScanTest() override
    {
        first.open();
        second.open();
    }

    const test::Gate first;
    const test::Gate second;
};

TEST_F(DetailViewScanTest, FollowsARunningScan)
{
    model->setSelectedNode(test::treeFromText("still.selected 1"));
    ASSERT_TRUE(waitForText("Scanning Disk Space..."));
    EXPECT_THAT(texts(),
                UnorderedElementsAre("Scanning Disk Space...", "Elapsed Time:", MatchesRegex("0[0-9]:[0-9][0-9]"),
                                     "Current Path:", "/r", "Scanned Files:", "0", "Scanned Folders:", AnyOf("0", "1"),
                                     "Calculated Size:", "Zero KB", "Cancel Scan"));
    QTest::qWait(200); // makes a progress report due
    first.open();
    ASSERT_TRUE(waitForText("3 bytes")) << "what was counted with the first item after a tenth of a second";
    EXPECT_THAT(texts(), Contains("1"));
    EXPECT_THAT(texts(), Contains(AnyOf("/r/a", "/r/two"))) << "a slow walk reports the folder behind it, too";

    second.open();
    EXPECT_TRUE(waitForText("12 bytes")) << "the result replaces the progress";
    EXPECT_THAT(texts(), Not(Contains("Cancel Scan")));
}

TEST_F(DetailViewScanTest, CancelsTheScanAndSaysSo)
{
    ASSERT_TRUE(waitForText("Cancel Scan"));
    EXPECT_TRUE(view->isCancelOffered());
    click("Cancel Scan");
    EXPECT_FALSE(model->scanner().isScanning());
    EXPECT_FALSE(view->cancelIfScanning()) << "there is nothing left to cancel";
    first.open();
    second.open();
    EXPECT_TRUE(waitForText("Scan cancelled by user."));
    EXPECT_THAT(texts(), Contains("No item selected"));
}

} // namespace
} // namespace morlaine
