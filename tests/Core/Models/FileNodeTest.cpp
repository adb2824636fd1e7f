#include "Core/Models/FileNode.h"

#include "Support/SmallStack.h"
#include "Support/TreeText.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace morlaine {
namespace {

using test::treeFromText;

/// The seven fields of a node, to be changed one at a time.
struct Fields {
    Uuid id = *Uuid::fromText("0F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4E5");
    FileUrl url = FileUrl::fromPath("/a/node");
    std::string name = "node";
    std::int64_t size = 12;
    bool isDirectory = true;
    FileCategory fileCategory = FileCategory::other;
    std::optional<std::vector<FileNode>> children = std::vector{treeFromText("inner 12", "/a/node")};

    [[nodiscard]] FileNode node() const { return {id, url, name, size, isDirectory, fileCategory, children}; }
};

TEST(FileNode, HoldsItsFields)
{
    const Fields fields;
    const FileNode node = fields.node();
    EXPECT_EQ(node.id(), fields.id);
    EXPECT_EQ(node.url(), fields.url);
    EXPECT_EQ(node.name(), "node");
    EXPECT_EQ(node.size(), 12);
    EXPECT_TRUE(node.isDirectory());
    EXPECT_EQ(node.fileCategory(), FileCategory::other);
    ASSERT_TRUE(node.children());
    ASSERT_EQ(node.children()->size(), 1U);
    EXPECT_EQ(node.children()->front(), fields.children->front());
    const FileNode nameless(fields.url, {}, 0, false, FileCategory::image, std::nullopt);
    EXPECT_EQ(nameless.name(), "");
    EXPECT_EQ(nameless.children(), std::nullopt);
    EXPECT_NE(treeFromText("x 1").id(), treeFromText("x 1").id()) << "ids are fresh";
}

TEST(FileNode, IsEqualInAllSevenFieldsOnly)
{
    const Fields fields;
    std::vector<Fields> others(9, fields);
    others[0].id = Uuid::random();
    others[1].url = FileUrl::fromPath("/b/node");
    others[2].name = "Node";
    others[3].size = 13;
    others[4].isDirectory = false;
    others[5].fileCategory = FileCategory::image;
    others[6].children = std::nullopt;
    others[7].children->push_back(others[7].children->front());
    others[8].children->clear();
    EXPECT_EQ(fields.node(), fields.node());
    EXPECT_EQ(std::hash<FileNode>()(fields.node()), std::hash<FileNode>()(fields.node()));
    for (std::size_t i = 0; i < others.size(); ++i) {
        EXPECT_NE(fields.node(), others[i].node()) << "field " << i;
        EXPECT_NE(std::hash<FileNode>()(fields.node()), std::hash<FileNode>()(others[i].node())) << "field " << i;
    }

    EXPECT_NE(others[6].node(), others[8].node()) << "no list and an empty one differ";
    EXPECT_NE(std::hash<FileNode>()(others[6].node()), std::hash<FileNode>()(others[8].node()));
}

TEST(FileNode, IsEqualWhicheverWayItsUrlWasMade)
{
    Fields whole;
    Fields appended;
    appended.url = FileUrl::fromPath("/a").appending("node");
    for (const auto& children : {std::optional<std::vector<FileNode>>(), whole.children}) {
        whole.children = children;
        appended.children = children;
        EXPECT_EQ(whole.node(), appended.node());
        EXPECT_EQ(std::hash<FileNode>()(whole.node()), std::hash<FileNode>()(appended.node()));
    }
}

TEST(FileNode, IsTheSameInAFolderAsFromTheAppendedUrl)
{
    const FileUrl folder = FileUrl::fromPath("/a");
    for (const std::string component : {"plain.txt", "ümlaut", "broken\xFF.gz", "\xED\xA0\x80"}) {
        const FileNode short_ = FileNode::inFolder(folder, component, 5, false, FileCategory::archive);
        const FileNode long_(short_.id(), FileUrl::fromPath("/a/" + component), component, 5, false,
                             FileCategory::archive, std::nullopt);
        EXPECT_EQ(short_, long_) << component;
        EXPECT_EQ(short_.url().path(), "/a/" + component);
    }
}

TEST(FileNode, ShowsValidUtf8AndKeepsExactBytes)
{
    const FileUrl url = FileUrl::fromPath("/a").appending("caf\xE9.MP3");
    const FileNode node(url, url.lastPathComponent(), 1, false, FileCategory::audio, std::nullopt);
    EXPECT_EQ(node.name(), "caf\uFFFD.MP3");
    EXPECT_EQ(node.url().path(), "/a/caf\xE9.MP3");
    EXPECT_EQ(node.fileExtension(), "MP3");
    EXPECT_EQ(FileNode(url, "\uFEFFcut \xE2\x82", 1, false, FileCategory::other, std::nullopt).name(),
              "\uFEFFcut \uFFFD\uFFFD");
    EXPECT_EQ(treeFromText(".bashrc 1").fileExtension(), "");
    EXPECT_EQ(FileNode(FileUrl::fromPath("/a/x.tar.gz"), "shown", 1, false, FileCategory::other, std::nullopt)
                  .fileExtension(),
              "gz")
        << "the extension is the url's, not the name's";
}

TEST(FileNode, CountsFilesAndFolders)
{
    struct Case {
        FileNode node;
        std::int64_t files;
        std::int64_t folders;
    };
    const FileUrl url = FileUrl::fromPath("/x");
    const Case cases[] = {
        {treeFromText("a 1"), 1, 0},
        {treeFromText("absent!"), 0, 1},
        {treeFromText("empty/"), 0, 1},
        {treeFromText("d/\n  a 1\n  b 2\n  e/"), 2, 2},
        {treeFromText("d/\n  e/\n    f/\n      a 1\n    g!\n  b 2"), 2, 4},
        {FileNode(url, "excluded", 0, false, FileCategory::other, std::vector<FileNode>()), 1, 0},
        {FileNode(url, "odd", 0, false, FileCategory::other, std::vector{treeFromText("d/\n  a 1")}), 1, 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.node.fileCount(), c.files) << c.node.name();
        EXPECT_EQ(c.node.directoryCount(), c.folders) << c.node.name();
    }
}

TEST(FileNodeDeathTest, EndsTheProgramWhenItsCountsOverflow)
{
    // Each folder holds the one before twice, which costs nothing.
    for (const char* innermost : {"file 1", "folder/"}) {
        FileNode node = treeFromText(innermost);
        const auto doubled = [&node] {
            return FileNode(FileUrl::fromPath("/d"), "d", 0, true, FileCategory::other, std::vector{node, node});
        };
        for (int level = 0; level < 62; ++level) {
            node = doubled();
        }
        EXPECT_GE(node.fileCount() + node.directoryCount(), std::int64_t{1} << 62);
        EXPECT_EXIT((void)doubled(), testing::KilledBySignal(SIGABRT), "^$") << innermost;
    }
}

TEST(FileNode, FormatsItsSize)
{
    EXPECT_EQ(treeFromText("x 0").formattedSize(), "Zero KB");
    EXPECT_EQ(treeFromText("x 1234567").formattedSize(), "1.2 MB");
}

TEST(FileNode, SharesOneRecordBetweenCopies)
{
    const FileNode tree = treeFromText("d/\n  a 1\n  b 2");
    FileNode copy = tree;
    EXPECT_EQ(copy.name().data(), tree.name().data());
    EXPECT_EQ(copy.children()->data(), tree.children()->data());
    copy = copy.children()->back();
    EXPECT_EQ(copy.name(), "b") << "a part outlives the handle that it was taken from";
    FileNode moved = std::move(copy);
    copy = tree;
    EXPECT_EQ(moved.name(), "b");
    EXPECT_EQ(copy, tree);
}

TEST(FileNode, MayBeDroppedOnAnyThread)
{
    for (int round = 0; round < 50; ++round) {
        std::optional<FileNode> tree = treeFromText("d/\n  e/\n    a 1\n    b 2\n  c 3");
        const FileNode part = tree->children()->front();
        std::thread thread([copy = *tree]() mutable { copy = copy.children()->back(); });
        tree.reset();
        thread.join();
        EXPECT_EQ(test::textOfTree(part), "e/\n  a 1\n  b 2\n");
    }
}

TEST(FileNode, WorksAtAnyDepthWithASmallStack)
{
    bool isEqual = false;
    bool isHashedAlike = false;
    std::int64_t folders = 0;
    test::runWithSmallStack([&] {
        constexpr int depth = 10'000;
        const FileNode one = test::chainOfFolders(depth);
        std::vector<FileNode> path;
        for (FileNode node = one;; node = node.children()->front()) {
            path.push_back(node);
            if (!node.children()) {
                break;
            }
        }
        // The same tree again in records of its own.
        FileNode other = path.back();
        for (auto node = path.rbegin() + 1; node != path.rend(); ++node) {
            other = FileNode(node->id(), node->url(), node->name(), node->size(), true, node->fileCategory(),
                             std::vector{other});
        }
        isEqual = one == other;
        isHashedAlike = std::hash<FileNode>()(one) == std::hash<FileNode>()(other);
        folders = other.directoryCount();
    });
    EXPECT_TRUE(isEqual);
    EXPECT_TRUE(isHashedAlike);
    EXPECT_EQ(folders, 10'000);
}

} // namespace
} // namespace morlaine
