#include "Services/Search/SearchIndex.h"

#include "Core/Models/TreeBuilder.h"
#include "Support/PlainSearch.h"
#include "Support/SmallStack.h"
#include "Support/TreeText.h"
#include "Support/TreeWalk.h"
#include "Utilities/Lowercase.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

namespace morlaine {
namespace {

using test::PlainHit;
using test::plainSearch;
using test::treeFromText;
using test::walkTree;

/// Qt's conversion would drop U+FEFF at the start as a byte order mark.
QString exactText(const std::string& text)
{
    return QString::fromStdString("x" + text).mid(1);
}

SearchResults find(const FileNode& root, const QString& text)
{
    return SearchIndex(root).search(text, std::nullopt, std::nullopt, std::nullopt);
}

std::vector<std::string> pathsFound(const FileNode& root, const char* text)
{
    const SearchResults results = find(root, exactText(text));
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < results.size(); ++i) {
        paths.push_back(results[i].path());
    }
    return paths;
}

TEST(SearchIndex, FindsByNameExtensionAndPathInTheOrderOfTheTree)
{
    const FileNode root =
        treeFromText("me/\n  Photos/\n    photo.JPG 30\n    trip/\n      b.png 20\n  jpg-notes.txt 10\n  r.Σ 5", "/U");
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"photos", {"/U/me/Photos", "/U/me/Photos/photo.JPG", "/U/me/Photos/trip", "/U/me/Photos/trip/b.png"}},
        {" JPG\u2029\t", {"/U/me/Photos/photo.JPG", "/U/me/jpg-notes.txt"}},
        {"e/photos/t", {"/U/me/Photos/trip", "/U/me/Photos/trip/b.png"}},
        {"Σ", {"/U/me/r.Σ"}}, // lower-casing a single sigma differs from lower-casing one at the end of a word
        {"hotos/b", {}},
        {"*.png", {}}};
    for (const auto& [query, paths] : cases) {
        EXPECT_EQ(pathsFound(root, query), paths) << query;
    }
    EXPECT_EQ(pathsFound(root, "u/M").size(), 7U) << "the root's own path is part of all paths";
    EXPECT_EQ(pathsFound(root, " ").size(), 7U) << "no text is no filter";
}

TEST(SearchIndex, TakesQueriesThatAreNoWholeWordOrNoText)
{
    const FileNode root = treeFromText("r/\n  ΜΟΥΣΙΚΗ 2\n  οδος.txt 1\n  why[? 1\n  😀 1", "/");
    EXPECT_THAT(pathsFound(root, "ΜΟΥΣ"), testing::ElementsAre("/r/ΜΟΥΣΙΚΗ"));
    EXPECT_THAT(pathsFound(root, "ΟΔΟΣ"), testing::ElementsAre("/r/οδος.txt"));
    EXPECT_EQ(find(root, QString(QChar(0xD83D))).size(), 0U) << "half a pair is no question mark";
    EXPECT_EQ(find(root, QStringLiteral("[") + QChar(0xDC00)).size(), 0U);
    EXPECT_THAT(pathsFound(root, "["), testing::ElementsAre("/r/why[?")) << "no capital letter";
    EXPECT_THAT(pathsFound(root, "😀"), testing::ElementsAre("/r/😀"));
    const FileNode odd(FileUrl::fromPath("/r/x"), "a/b", 1, false, FileCategory::other, std::nullopt);
    const FileNode slashInName(FileUrl::fromPath("/r"), "r", 1, true, FileCategory::other, std::vector{odd});
    EXPECT_THAT(pathsFound(slashInName, "/r/a/b"), testing::ElementsAre("/r/a/b"));
}

/// Trees and queries from parts that are hard to lower-case, to separate and to tell apart.
class RandomSearch {
public:
    explicit RandomSearch(unsigned seed) : m_random(seed) {}

    [[nodiscard]] FileNode tree(int depth = 0)
    {
        const bool isOdd = below(8) == 0;
        const std::string name = isOdd ? text(3) : nameFor(text(3));
        const FileUrl url = isOdd ? FileUrl::fromPath("/x/" + text(2) + ".Σ") : m_folder.appending(name);
        const FileCategory category = FileCategory::allCases[below(9)];
        const Uuid id = m_ids.empty() || below(6) != 0 ? Uuid::random() : m_ids[below(m_ids.size())];
        m_ids.push_back(id);
        if (depth == 4 || (depth > 0 && below(3) == 0)) {
            return {id, url, name, static_cast<std::int64_t>(below(5)), false, category, std::nullopt};
        }
        const FileUrl above = std::exchange(m_folder, url);
        std::vector<FileNode> children;
        for (std::size_t count = below(5); count > 0; --count) {
            children.push_back(tree(depth + 1));
        }
        m_folder = above;
        return {id, url, name, static_cast<std::int64_t>(below(5)), true, category, std::move(children)};
    }

    [[nodiscard]] std::string text(std::size_t most)
    {
        static constexpr std::array<const char*, 21> pieces{
            "a", "A", "b", "ab",  "\u0130", "i\u0307", "\u00DF", "\u1E9E", "\u03A3", "\u03C3", "\u03C2",
            ".", ".", "/", "jpg", "JPG",    "e\u0301", "\uFFFD", "\u00E9", "\uFEFF", "\u00C9"};
        std::string result;
        for (std::size_t count = below(most + 1); count > 0; --count) {
            result += pieces[below(pieces.size())];
        }
        return result;
    }

    [[nodiscard]] std::size_t below(std::size_t limit)
    {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(m_random);
    }

    bool hasSlashInNames = false;

private:
    /// A possible file name, unless this tree may have slashes in names.
    [[nodiscard]] std::string nameFor(std::string name) const
    {
        if (!hasSlashInNames) {
            std::erase(name, '/');
        }
        return name.empty() || name.find('/') != std::string::npos ? "n" + name : name;
    }

    std::mt19937 m_random;
    FileUrl m_folder = FileUrl::fromPath("/top");
    std::vector<Uuid> m_ids;
};

/// Whether one of the ids is that of an item inside the folder.
bool holdsAny(const FileNode& folder, const std::unordered_set<Uuid>& ids)
{
    bool holds = false;
    walkTree(folder, [&](const FileNode& node) {
        holds = holds || (node.position() != folder.position() && ids.contains(node.id()));
    });
    return holds;
}

void expectSameResults(const FileNode& root, const SearchResults& results, const std::vector<PlainHit>& expected)
{
    ASSERT_EQ(results.size(), expected.size());
    std::unordered_set<Uuid> ids;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        ASSERT_EQ(results[i].node(), expected[i].node);
        ASSERT_EQ(results[i].path(), expected[i].path);
        ids.insert(expected[i].node.id());
    }
    const NodeIDSet highlighted(results);
    ASSERT_EQ(highlighted.empty(), expected.empty());
    const FileNode above(FileUrl::fromPath("/"), "/", 0, true, FileCategory::other, std::vector{root});
    walkTree(root, [&](const FileNode& node) {
        ASSERT_EQ(highlighted.contains(node), ids.contains(node.id()));
        ASSERT_EQ(highlighted.contains(node.id()), ids.contains(node.id()));
        const bool holds = holdsAny(node, ids);
        ASSERT_EQ(highlighted.containsAnyInside(root.tree(), node.position()), holds);
        ASSERT_EQ(highlighted.containsAnyInside(above.tree(), node.position() - root.position() + 1), holds)
            << "in another tree";
    });
    ASSERT_FALSE(highlighted.contains(Uuid::random()));
}

TEST(SearchIndex, AgreesWithThePlainSearch)
{
    for (unsigned seed = 0; seed < 400; ++seed) {
        RandomSearch random(seed);
        random.hasSlashInNames = seed % 3 == 0;
        const FileNode tree = random.tree();
        const std::size_t children = tree.childrenOrNone().size();
        const FileNode root = seed % 5 == 0 && children > 0 ? tree.childrenOrNone()[children - 1] : tree;
        ASSERT_TRUE(std::ranges::is_sorted(root.tree().repeatedIds())) << "in the order of the tree";
        const SearchIndex index(root);
        for (int query = 0; query < 25; ++query) {
            const std::string text = random.text(4);
            const auto category = random.below(4) != 0
                                      ? std::nullopt
                                      : std::optional(FileCategory(FileCategory::allCases[random.below(9)]));
            const auto size = [&] {
                return random.below(4) != 0 ? std::nullopt : std::optional(static_cast<std::int64_t>(random.below(5)));
            };
            const auto minSize = size();
            const auto maxSize = size();
            SCOPED_TRACE("seed " + std::to_string(seed) + ", query \"" + text + "\"");
            expectSameResults(root, index.search(exactText(text), category, minSize, maxSize),
                              plainSearch(root, text, category, minSize, maxSize));
            if (testing::Test::HasFatalFailure()) {
                return;
            }
        }
    }
}

/// Large enough for helper threads. Folders reach from one thread's share into the next ones'.
TEST(SearchIndex, FindsTheSameWithHelpers)
{
    TreeBuilder builder(TreeBuilder::Source::measured);
    builder.add({Uuid::random(), 0, true, {}}, "/", "/");
    builder.openList();
    for (int folder = 0; folder < 6; ++folder) {
        builder.addComponent({Uuid::random(), 0, true, {}}, folder % 2 == 0 ? "Even" : "odd");
        builder.openList();
        for (int file = 0; file < 10'000 * (1 + folder * folder % 7); ++file) {
            const std::string name = (file % 5 == 0 ? "Q" : "q") + std::to_string(file * 7919 % 65'537);
            builder.addComponent({Uuid::random(), 1, false, {}}, name);
        }
        builder.closeList();
    }
    builder.closeList();
    const FileNode root = builder.finish();
    const Tree& tree = root.tree();
    for (const std::string query : {"q", "odd", "even", "q77", "1", "no such name"}) {
        std::vector<Tree::Position> expected;
        Tree::Position foundEnd = 0;
        for (Tree::Position node = 1; node < tree.size(); ++node) {
            const bool isNamed = lowercased(tree.nameOf(node)).find(query) != std::string::npos;
            foundEnd = isNamed ? std::max(foundEnd, tree.endOf(node)) : foundEnd;
            if (node < foundEnd) {
                expected.push_back(node);
            }
        }
        for (int round = 0; round < 10; ++round) {
            const SearchResults results = find(root, exactText(query));
            ASSERT_EQ(results.size(), expected.size()) << query;
            for (std::size_t i = 0; i < expected.size(); ++i) {
                ASSERT_EQ(results[i].node().position(), expected[i]) << query;
            }
        }
    }
}

TEST(SearchIndex, NeedsNoMoreStackForADeepTree)
{
    const FileNode root = test::chainOfFolders(10'000);
    std::size_t found = 0;
    test::runWithSmallStack([&] { found = find(root, QStringLiteral("/")).size(); });
    EXPECT_EQ(found, static_cast<std::size_t>(root.fileCount() + root.directoryCount()));
}

} // namespace
} // namespace morlaine
