#include "UI/Views/Treemap/TreemapPicture.h"

#include "Core/Treemap/TreemapEngine.h"
#include "Support/TreeText.h"
#include "Support/Wait.h"

#include <gtest/gtest.h>

#include <string>

namespace morlaine {

namespace {

std::shared_ptr<const TreemapLayout> layoutOf(const FileNode& root)
{
    const auto layout = std::make_shared<TreemapLayout>();
    TreemapEngine::layOut(root, {0, 0, 400, 300}, *layout);
    return layout;
}

FileNode folderOfFiles(int count)
{
    std::string text = "root/\n";
    for (int number = 0; number < count; ++number) {
        text += "  " + std::to_string(number) + ".mp3 9\n";
    }
    return test::treeFromText(text);
}

} // namespace

class TreemapPictureTest : public testing::Test {
protected:
    void setScene(const std::shared_ptr<const TreemapLayout>& layout, const QColor& ground = Qt::black)
    {
        m_scene = {layout, {}, ground, {410, 300}, 1}; // the ground is seen on the right
        m_picture.outdate(*layout);
    }

    /// The colour where there are no rectangles.
    [[nodiscard]] QColor ground() const { return m_picture.pixmap().toImage().pixelColor(409, 0); }

    void update() { m_picture.update(1); }

    const std::shared_ptr<const TreemapLayout> m_large =
        layoutOf(folderOfFiles(static_cast<int>(TreemapTiles::worthAThread)));
    TreemapScene m_scene;
    int m_changes = 0;
    TreemapPicture m_picture{[this] { return m_scene; }, [this] { ++m_changes; }, std::chrono::milliseconds(0)};
};

TEST_F(TreemapPictureTest, PaintsALargePictureInTurnsAndASmallOneAtOnce)
{
    setScene(m_large);
    update();
    EXPECT_TRUE(m_picture.isBeingPainted());
    EXPECT_TRUE(m_picture.pixmap().isNull());
    ASSERT_TRUE(test::waitUntil([this] { return m_changes == 1; }));
    EXPECT_TRUE(m_picture.isUpToDate());
    EXPECT_EQ(m_picture.pixmap().toImage(), TreemapTiles::start(m_scene)->paint().value()) << "without labels";

    setScene(layoutOf(folderOfFiles(1000)), Qt::blue);
    EXPECT_FALSE(m_picture.isUpToDate());
    update();
    EXPECT_TRUE(m_picture.isUpToDate());
    EXPECT_EQ(ground(), QColor(Qt::blue));
    EXPECT_EQ(m_changes, 1);
    EXPECT_EQ(m_picture.paintCount(), 2);
}

TEST_F(TreemapPictureTest, FinishesWhatIsOutdatedUnlessItIsAnotherFolder)
{
    setScene(m_large, Qt::red);
    update();
    setScene(m_large, Qt::green);
    update();
    ASSERT_TRUE(test::waitUntil([this] { return m_changes == 1; }));
    EXPECT_EQ(ground(), QColor(Qt::red));
    EXPECT_FALSE(m_picture.isUpToDate());
    update();
    EXPECT_EQ(ground(), QColor(Qt::red)) << "until the next one is finished";
    ASSERT_TRUE(test::waitUntil([this] { return m_changes == 2; }));
    EXPECT_EQ(ground(), QColor(Qt::green));
    EXPECT_TRUE(m_picture.isUpToDate());

    setScene(m_large, Qt::red);
    update();
    setScene(layoutOf(folderOfFiles(1)), Qt::blue);
    EXPECT_FALSE(m_picture.isBeingPainted());
    update();
    EXPECT_EQ(ground(), QColor(Qt::blue));

    setScene(m_large, Qt::red);
    update();
    setScene(std::make_shared<TreemapLayout>());
    EXPECT_TRUE(m_picture.pixmap().isNull());
    QTest::qWait(0);
    EXPECT_FALSE(m_picture.isBeingPainted());
    EXPECT_EQ(m_changes, 2);
}

} // namespace morlaine
