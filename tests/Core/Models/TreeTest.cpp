#include "Core/Models/FileNodeJson.h"
#include "Core/Models/FileNodeReaders.h"
#include "Core/Models/TreeBuilder.h"
#include "Support/Json.h"
#include "Support/SmallStack.h"
#include "Support/TreeText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace morlaine {
namespace {

using test::encoded;
using test::readWith;
using test::textOfTree;
using test::treeFromText;

/// A simple node: its fields and its children.
struct PlainNode {
    Uuid id = Uuid::random();
    std::string path;
    std::string name;
    std::int64_t size = 0;
    bool isDirectory = false;
    FileCategory category;
    std::optional<std::vector<PlainNode>> children;
};

class RandomTrees {
public:
    explicit RandomTrees(unsigned seed) : m_random(seed) {}

    /// In an odd tree, urls need not match names, and ids may repeat.
    [[nodiscard]] PlainNode tree(bool isOdd, const std::string& folder = "/top", int depth = 0)
    {
        static constexpr std::array<const char*, 9> names{"a",      "B.txt", "c d", "ü",       "\"q\"\\\n\x01",
                                                          "per%25", "e?#",   "Σ.Σ", "x\u00ADy"};
        static constexpr std::array<const char*, 5> odd{"", "a/b", "..", "/", "n"};
        PlainNode node;
        node.name = std::string(names[below(names.size())]) + std::to_string(below(3));
        node.path = folder + '/' + node.name;
        node.size = static_cast<std::int64_t>(below(4));
        node.category = FileCategory::allCases[below(9)];
        node.isDirectory = depth < 4 && below(2) == 0;
        if (isOdd && below(3) == 0) {
            (below(2) == 0 ? node.name : node.path) = "/x" + std::string(odd[below(odd.size())]);
            node.path += below(3) == 0 ? "/" : "";
            node.path += below(3) == 0 ? "\xFF" : "";
            node.id = Uuid();
        }
        if (depth < 4 && (isOdd ? below(2) == 0 : node.isDirectory)) {
            std::string inside = node.path;
            FileUrl::openFolder(inside);
            inside.pop_back();
            node.children.emplace();
            for (std::size_t count = below(5); count > 0; --count) {
                node.children->push_back(tree(isOdd, inside, depth + 1));
            }
        }
        return node;
    }

    /// The JSON object of a node with its keys in random order, some of them twice.
    [[nodiscard]] std::string json(const PlainNode& node)
    {
        std::vector<std::string> members{"\"id\":\"" + node.id.toString() + '"',
                                         "\"url\":\"" + FileUrl::fromPath(node.path).absoluteString() + '"',
                                         "\"name\":" + quoted(node.name),
                                         "\"size\":" + std::to_string(node.size),
                                         std::string("\"isDirectory\":") + (node.isDirectory ? "true" : "false"),
                                         "\"fileCategory\":\"" + std::string(node.category.rawValue()) + '"'};
        std::string children = "null";
        if (node.children) {
            children = "[";
            for (const PlainNode& child : *node.children) {
                children += (children.size() > 1 ? ", " : "") + json(child);
            }
            children += ']';
        }
        members.push_back("\"children\":" + children);
        std::ranges::shuffle(members, m_random);
        if (below(4) == 0) {
            members.insert(members.begin(), {"\"size\":7", "\"name\":\"\"", "\"url\":\"file:///a/b\""});
            members.insert(members.begin(), R"("children":[)" + std::string(R"({"id":")") + Uuid().toString() +
                                                R"(","url":"file:///a/b/c","name":"c","size":1,)" +
                                                R"("isDirectory":true,"fileCategory":"other"}])");
        }
        std::string text;
        for (const std::string& member : members) {
            text += (text.empty() ? "{" : ",") + member;
        }
        return text + '}';
    }

    [[nodiscard]] std::size_t below(std::size_t limit)
    {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(m_random);
    }

private:
    [[nodiscard]] static std::string quoted(const std::string& text)
    {
        std::string result = "\"";
        for (const char c : text) {
            constexpr std::string_view escaped = "\"\\\n\x01";
            constexpr std::array<const char*, 4> escapes{"\\\"", "\\\\", "\\u000a", "\\u0001"};
            const std::size_t found = escaped.find(c);
            result += found == std::string_view::npos ? std::string(1, c) : std::string(escapes[found]);
        }
        return result + '"';
    }

    std::mt19937 m_random;
};

FileNode madeByConstructor(const PlainNode& node)
{
    std::optional<std::vector<FileNode>> children;
    if (node.children) {
        children.emplace();
        std::ranges::transform(*node.children, std::back_inserter(*children), madeByConstructor);
    }
    return {node.id,       FileUrl::fromPath(node.path), node.name, node.size, node.isDirectory,
            node.category, std::move(children)};
}

void build(TreeBuilder& builder, const PlainNode& node)
{
    builder.add({node.id, node.size, node.isDirectory, node.category}, node.path, node.name);
    if (node.children) {
        builder.openList();
        for (const PlainNode& child : *node.children) {
            build(builder, child);
        }
        builder.closeList();
    }
}

FileNode madeByBuilder(const PlainNode& node, TreeBuilder::Source source)
{
    TreeBuilder builder(source);
    build(builder, node);
    return builder.finish();
}

void expectSame(const FileNode& node, const PlainNode& plain)
{
    ASSERT_EQ(node.id(), plain.id);
    ASSERT_EQ(node.url().bytes(), plain.path);
    ASSERT_EQ(node.name(), plain.name);
    ASSERT_EQ(node.size(), plain.size);
    ASSERT_EQ(node.isDirectory(), plain.isDirectory);
    ASSERT_EQ(node.fileCategory(), plain.category);
    ASSERT_EQ(node.children().has_value(), plain.children.has_value());
    std::size_t number = 0;
    for (const FileNode& child : node.childrenOrNone()) {
        ASSERT_LT(number, plain.children->size());
        expectSame(child, (*plain.children)[number++]);
    }
    ASSERT_EQ(number, plain.children ? plain.children->size() : 0);
}

TEST(Tree, IsTheSameWhicheverWayItWasMade)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        RandomTrees random(seed);
        const PlainNode plain = random.tree(seed % 2 == 0);
        const FileNode made = madeByConstructor(plain);
        ASSERT_NO_FATAL_FAILURE(expectSame(made, plain));
        const auto read = readWith(readAnyForm, random.json(plain));
        ASSERT_TRUE(std::holds_alternative<FileNode>(read)) << std::get<DecodeError>(read).message();
        for (const FileNode& other : {madeByBuilder(plain, TreeBuilder::Source::given), std::get<FileNode>(read),
                                      std::get<FileNode>(readWith(decodeFileNode, encoded(made)))}) {
            ASSERT_NO_FATAL_FAILURE(expectSame(other, plain));
            ASSERT_EQ(other, made);
            ASSERT_EQ(std::hash<FileNode>()(other), std::hash<FileNode>()(made));
        }
    }
}

void sortPlainly(PlainNode& node)
{
    if (node.children) {
        std::ranges::stable_sort(*node.children, std::greater(), &PlainNode::size);
        std::ranges::for_each(*node.children, sortPlainly);
    }
}

TEST(Tree, HasMeasuredChildrenLargestFirst)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        PlainNode plain = RandomTrees(seed).tree(seed % 2 == 0);
        const FileNode measured = madeByBuilder(plain, TreeBuilder::Source::measured);
        sortPlainly(plain);
        ASSERT_NO_FATAL_FAILURE(expectSame(measured, plain));
    }
}

/// Changes a byte of the text, or removes some.
std::string damaged(std::string text, RandomTrees& random)
{
    static constexpr std::string_view bytes = "\"\\{}[],:/%a0-. \n\xC3\xFFu?";
    const std::size_t place = random.below(text.size());
    switch (random.below(4)) {
    case 0:
        return text.substr(0, place);
    case 1:
        return text.erase(place, random.below(40));
    default:
        text[place] = bytes[random.below(bytes.size())];
        return text;
    }
}

/// Whether the quick reader takes the text.
bool isReadAlike(const std::string& text)
{
    const std::optional<FileNode> quick = readWith(readExactForm, text);
    const auto thorough = readWith(readAnyForm, text);
    EXPECT_TRUE(!quick || (std::holds_alternative<FileNode>(thorough) && *quick == std::get<FileNode>(thorough)))
        << text;
    return quick.has_value();
}

TEST(TreeReaders, AgreeOnEveryText)
{
    const std::string node = R"({"id":"0F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4E5","url":"file:///top","name":"n","size":1,)"
                             R"("isDirectory":true,"fileCategory":"other")";
    const std::tuple<const char*, const char*, const char*, bool> cases[] = {
        {"top", "n", "n", true},        {"top%2F", "n", "n", false},    {"top", "%", "n", false},
        {"top", "n", "\\u1005", false}, {"top", "n", "\\n\x01", false},
    };
    for (const auto& [top, inner, name, isExact] : cases) {
        std::string text = node + R"(,"children":[)" + node + "}]}";
        text.replace(text.rfind("top"), 3, std::string(top) + '/' + inner);
        text.replace(text.rfind("n\",\"size"), 1, name);
        text.replace(text.find("top"), 3, top);
        EXPECT_EQ(isReadAlike(text), isExact) << text;
    }
    std::size_t accepted = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        RandomTrees random(seed);
        const PlainNode plain = random.tree(seed % 3 == 0);
        std::string text = encoded(madeByConstructor(plain));
        if (seed % 3 == 1) {
            ASSERT_TRUE(readWith(readExactForm, text)) << "what is written is in the exact form\n" << text;
        }
        if (seed % 4 != 0) {
            text = damaged(std::move(text), random);
        }
        accepted += isReadAlike(text) ? 1 : 0;
    }
    EXPECT_GT(accepted, 500U);
}

TEST(TreeReaders, ReadInPiecesWhatIsLargeOrHasAnotherName)
{
    const FileNode file(FileUrl::fromPath("/r/a"), "another name", 1, false, FileCategory::other, std::nullopt);
    for (const FileNode& tree :
         {test::folderOfFiles(20'000), treeFromText(std::string(300'000, 'n') + " 1"),
          FileNode(FileUrl::fromPath("/r"), "r", 1, true, FileCategory::other, std::vector{file})}) {
        EXPECT_EQ(readWith(readExactForm, encoded(tree)), tree);
    }
}

TEST(Tree, StaysWholeForTheLastOfItsHandles)
{
    std::vector<std::pair<FileNode, std::string>> kept;
    for (unsigned seed = 0; seed < 50; ++seed) {
        RandomTrees random(seed);
        FileNode node = madeByConstructor(random.tree(seed % 2 == 0));
        while (!node.childrenOrNone().empty() && random.below(3) != 0) {
            node = node.childrenOrNone()[random.below(node.childrenOrNone().size())];
        }
        // A node alone equals the same node inside another tree.
        const FileNode above(FileUrl::fromPath("/above"), "above", 0, true, FileCategory::other,
                             std::vector{treeFromText("first 1"), node});
        ASSERT_EQ(above.childrenOrNone()[1], node);
        ASSERT_EQ(std::hash<FileNode>()(above.childrenOrNone()[1]), std::hash<FileNode>()(node));
        kept.emplace_back(above.childrenOrNone()[1], textOfTree(node));
        kept.emplace_back(node, textOfTree(node));
    }
    for (const auto& [node, text] : kept) {
        EXPECT_EQ(textOfTree(node), text);
    }
}

TEST(TreeBuilder, EndsAtItsLimits)
{
    const auto addThree = [](TreeBuilder::Limits limits, const std::string& another = "more") {
        TreeBuilder builder(TreeBuilder::Source::measured, limits);
        builder.add({}, "/root", "root");
        builder.openList();
        builder.addComponent({}, "four");
        builder.addComponent({}, "more");
        builder.closeList();
        builder.amend(2, {}, "/root/" + another, another);
        return builder.finish().childrenOrNone().size();
    };
    EXPECT_EQ(addThree({.nodes = 3, .nameBytes = 16}), 2U);
    EXPECT_THROW(addThree({.nodes = 2, .nameBytes = 16}), TreeTooLarge);
    EXPECT_THROW(addThree({.nodes = 3, .nameBytes = 15}), TreeTooLarge);
    EXPECT_EQ(addThree({.nodes = 3, .nameBytes = 17}, "other"), 2U);
    EXPECT_THROW(addThree({.nodes = 3, .nameBytes = 16}, "other"), TreeTooLarge);
}

TEST(TreeBuilder, TakesDeepAndWideTreesWithASmallStack)
{
    test::runWithSmallStack([] {
        TreeBuilder builder(TreeBuilder::Source::measured);
        builder.add({Uuid::random(), 0, true, {}}, "/r", "r");
        for (int depth = 0; depth < 100'000; ++depth) {
            builder.openList();
            builder.addComponent({Uuid::random(), 1, false, {}}, "f");
            builder.addComponent({Uuid::random(), 2, true, {}}, "d");
        }
        builder.openList();
        for (int number = 0; number < 2'000'000; ++number) {
            builder.addComponent({Uuid::random(), number % 1000, false, {}}, "x");
        }
        for (int depth = 0; depth <= 100'000; ++depth) {
            builder.closeList();
        }
        const FileNode root = builder.finish();
        EXPECT_EQ(root.fileCount(), 2'100'000);
        EXPECT_EQ(root.childrenOrNone().front().name(), "d");
        EXPECT_EQ(root.tree().sizeOf(root.tree().size() - 1), 1) << "the file of the top comes last";
        EXPECT_EQ(root.tree().sizeOf(100'001), 999) << "the largest of the wide folder comes first";
        EXPECT_EQ(FileNode::at(root.tree(), 100'001).url().bytes().size(), 2 + 2 * 100'001U);
    });
}

} // namespace
} // namespace morlaine
