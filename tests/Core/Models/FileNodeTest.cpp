#include "Core/Models/FileNode.h"

#include "Support/SmallStack.h"
#include "Support/TreeText.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace morlaine {
namespace {

using test::treeFromText;

/// The seven fields of a node, to change one at a time.
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

TEST(FileNode, IsEqualInAllSevenFieldsOnly)
{
    const Fields fields;
    const auto child = [&fields](const char* path, bool isFolder = false) {
        return std::vector{
            FileNode(fields.id, FileUrl::fromPath(path), "n", 12, isFolder, FileCategory::other, std::nullopt)};
    };
    std::vector<Fields> others(13, fields);
    others[0].id = Uuid::random();
    others[1].url = FileUrl::fromPath("/b/node");
    others[2].name = "Node";
    others[3].size = 13;
    others[4].isDirectory = false;
    others[5].fileCategory = FileCategory::image;
    others[6].children = std::nullopt;
    others[7].children->push_back(others[7].children->front());
    others[8].children->clear();
    others[9].children = child("/x/n");
    others[10].children = child("/y/n");
    others[12].children = child("/x/n", true);
    others[11].children = std::nullopt;
    others[11].url = others[1].url;
    others.push_back(fields);
    for (std::size_t i = 0; i < others.size(); ++i) {
        for (std::size_t j = 0; j < others.size(); ++j) {
            const FileNode a = others[i].node();
            const FileNode b = others[j].node();
            EXPECT_EQ(a == b, i == j) << i << ", " << j;
            EXPECT_EQ(std::hash<FileNode>()(a) == std::hash<FileNode>()(b), i == j) << i << ", " << j;
        }
    }
    const FileNode root = fields.node();
    EXPECT_NE(root, root.children()->front()) << "of the same tree";
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
    const FileUrl url = FileUrl::fromPath("/x");
    const std::tuple<FileNode, std::int64_t, std::int64_t> cases[] = {
        {treeFromText("a 1"), 1, 0},
        {treeFromText("absent!"), 0, 1},
        {treeFromText("d/\n  e/\n    f/\n      a 1\n    g!\n  b 2"), 2, 4},
        {FileNode(url, "excluded", 0, false, FileCategory::other, std::vector<FileNode>()), 1, 0},
        {FileNode(url, "odd", 0, false, FileCategory::other, std::vector{treeFromText("d/\n  a 1")}), 1, 0},
    };
    for (const auto& [node, files, folders] : cases) {
        EXPECT_EQ(node.fileCount(), files) << node.name();
        EXPECT_EQ(node.directoryCount(), folders) << node.name();
    }
}

TEST(FileNode, MayBeDroppedOnAnyThread)
{
    for (int round = 0; round < 50; ++round) {
        std::optional<FileNode> tree = treeFromText("d/\n  e/\n    a 1\n    b 2\n  c 3");
        const FileNode part = tree->children()->front();
        std::thread thread([copy = *tree]() mutable { copy = (*copy.children())[1]; });
        tree.reset();
        thread.join();
        EXPECT_EQ(test::textOfTree(part), "e/\n  a 1\n  b 2\n");
    }
}

TEST(FileNode, WorksAtAnyDepthWithASmallStack)
{
    bool isEqual = false;
    test::runWithSmallStack([&] {
        const FileNode tree = test::chainOfFolders(100'000);
        const FileNode copy(tree.id(), tree.url(), tree.name(), tree.size(), true, tree.fileCategory(),
                            std::vector{tree.children()->front()});
        isEqual = copy == tree && std::hash<FileNode>()(copy) == std::hash<FileNode>()(tree) &&
                  copy.fileCount() + copy.directoryCount() == 100'001;
    });
    EXPECT_TRUE(isEqual);
}

} // namespace
} // namespace morlaine
