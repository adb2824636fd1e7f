#include "Core/Models/FileNodeJson.h"

#include "Support/Json.h"
#include "Support/SmallStack.h"
#include "Support/TreeText.h"

#include <QBuffer>
#include <QFile>

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>

namespace morlaine {
namespace {

using namespace std::string_literals;
using test::encoded;
using test::treeFromText;

std::variant<FileNode, DecodeError> decoded(const std::string& text)
{
    return test::readWith(decodeFileNode, text);
}

/// A device that repeats `piece` until `length` bytes have been read, and then returns a result of its own.
class Repeated : public QIODevice {
public:
    static constexpr qint64 outOfMemory = -2;

    Repeated(std::string start, std::string piece, qint64 length, qint64 resultAtEnd = 0)
        : m_resultAtEnd(resultAtEnd)
        , m_start(std::move(start))
        , m_piece(std::move(piece))
        , m_length(length)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] qint64 bytesTaken() const { return m_taken; }
    [[nodiscard]] bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 most) override
    {
        if (m_resultAtEnd == outOfMemory && m_taken == m_length) {
            throw std::bad_alloc();
        }
        const qint64 length = std::min(most, m_length - m_taken);
        for (qint64 i = 0; i < length; ++i, ++m_taken) {
            const auto position = static_cast<std::size_t>(m_taken);
            data[i] =
                position < m_start.size() ? m_start[position] : m_piece[(position - m_start.size()) % m_piece.size()];
        }
        return length == 0 ? m_resultAtEnd : length;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    qint64 m_resultAtEnd;
    std::string m_start;
    std::string m_piece;
    qint64 m_length;
    qint64 m_taken = 0;
};

constexpr const char* fileText =
    R"({"id":"0F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4E5","url":"file:///a%20b/x.c","name":"x.c","size":42,)"
    R"("isDirectory":false,"fileCategory":"sourceCode"})";

/// The text of a small node with one part replaced.
std::string withReplaced(const std::string& piece, const std::string& replacement)
{
    std::string text = fileText;
    const std::size_t position = text.find(piece);
    EXPECT_NE(position, std::string::npos) << piece;
    return text.replace(position, piece.size(), replacement);
}

std::string withChildren(const std::string& children)
{
    return withReplaced(R"("sourceCode"})", R"("sourceCode","children":)" + children + '}');
}

TEST(FileNodeJson, WritesKeysInOrderAndOmitsAnAbsentList)
{
    const Uuid id = *Uuid::fromText("0f1c2d3e-4a5b-4c6d-8e7f-90a1b2c3d4e5");
    const FileUrl folder = FileUrl::fromPath("/a b");
    const FileNode file(id, folder.appending("x.c"), "x.c", 42, false, FileCategory::sourceCode, std::nullopt);
    EXPECT_EQ(encoded(file), fileText);

    const FileNode empty(id, folder, "a b", 0, true, FileCategory::other, std::vector<FileNode>());
    const std::string start = R"({"id":"0F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4E5","url":"file:///a%20b","name":"a b",)";
    EXPECT_EQ(encoded(empty), start + R"("size":0,"isDirectory":true,"fileCategory":"other","children":[]})");

    const FileNode full(id, folder, "a b", 84, true, FileCategory::other, std::vector{file, file});
    EXPECT_EQ(encoded(full.children()->front()), fileText) << "with the whole url of the top";
    EXPECT_EQ(encoded(full), start + R"("size":84,"isDirectory":true,"fileCategory":"other","children":[)" + fileText +
                                 ',' + fileText + "]}");
}

TEST(FileNodeJson, ReadsBackWhatItWrote)
{
    const FileUrl folder = FileUrl::fromPath("/top/");
    std::vector<FileNode> odd;
    for (const std::string name :
         {"quote\"back\\slash", "line\nbreak\x01", "broken\xFF", "ünï😀", "per%cent", " ", "a/b"}) {
        odd.push_back(FileNode(FileUrl::fromPath("/top/" + name), name, 5, false, FileCategory::image, std::nullopt));
        if (name.find('/') == std::string::npos) {
            odd.push_back(FileNode(folder.appending(name), name, std::int64_t{1} << 60, false, FileCategory::video,
                                   std::nullopt));
        }
    }
    const FileNode trees[] = {
        treeFromText("one 1"),
        treeFromText("absent!"),
        treeFromText(std::string(300'000, 'n') + " 1"),
        treeFromText("root/\n  big.mp4 900\n  sub/\n    a.txt 3\n    deeper/\n      b 2\n  empty/\n  c 1"),
        FileNode(FileUrl::fromPath("/"), "/", 0, true, FileCategory::other, std::vector{treeFromText("x 1", "/")}),
        FileNode(folder, "shown as something else", 0, true, FileCategory::other, odd),
    };
    for (const FileNode& tree : trees) {
        const auto result = decoded(encoded(tree));
        ASSERT_TRUE(std::holds_alternative<FileNode>(result)) << std::get<DecodeError>(result).message();
        EXPECT_EQ(std::get<FileNode>(result), tree);
        EXPECT_EQ(encoded(std::get<FileNode>(result)), encoded(tree));
    }
}

TEST(FileNodeJson, KeepsAUrlThatDoesNotStandInItsFolders)
{
    for (const std::string url : {"file:///a%20b/x.c/in", "file:///a%20b/x.c/in%2Fside", "file:///a%20b/x.c/in/side",
                                  "file:///elsewhere/in", "file:///a%20b/x.cin", "file:///a%20b/x.c", "file:///"}) {
        std::string child = fileText;
        child.replace(child.find("file:"), std::string("file:///a%20b/x.c").size(), url);
        const auto result = decoded(withChildren("[" + child + "]"));
        ASSERT_TRUE(std::holds_alternative<FileNode>(result)) << url;
        EXPECT_EQ(std::get<FileNode>(result).childrenOrNone().front().url().path(), FileUrl::parse(url)->path());
    }
}

TEST(FileNodeJson, AcceptsEveryTextOfATree)
{
    const auto isLeaf = [](const FileNode& node) { return !node.children() && node.size() == 42; };
    const auto hasOneChild = [](const FileNode& node) { return node.childrenOrNone().size() == 1; };
    const std::pair<std::string, std::function<bool(const FileNode&)>> cases[] = {
        {withChildren("null"), isLeaf},
        {withChildren("[]"), [](const FileNode& node) { return node.children() && node.children()->empty(); }},
        {withReplaced(R"("size":42,)", R"("size":1,"size":42,)"), isLeaf},
        {withReplaced("42", "9223372036854775807"), [](const FileNode& n) { return n.size() > 0; }},
        {withReplaced("0F1C", "0f1c"), isLeaf},
        {withReplaced("x.c\",\"size", "\\u00e9\\ud83d\\ude00\\\"\",\"size"),
         [](const FileNode& node) { return node.name() == "é😀\""; }},
        {withReplaced("\"x.c\"", R"("\u0105\u1005")"), [](const FileNode& node) { return node.name() == "ąစ"; }},
        {withReplaced(R"("name")",
                      R"("new":[{"id":1,"children":{}},[[null,1.5e9,1.9e308,"x"]]],"other":{"size":"a"},"name")"),
         isLeaf},
        {" \n\t" + withReplaced(":42", " : 42 ") + " \r\n", isLeaf},
        {R"({"children":[)"s + fileText + "]," + (fileText + 1), hasOneChild},
        {R"({"children":[{"children":[],)"s + (fileText + 1) + R"(],"children":[)" + withReplaced("\"x.c\"", "\"y\"") +
             "]," + (fileText + 1),
         [](const FileNode& node) { return node.childrenOrNone().front().name() == "y"; }},
        {withChildren("[" +
                      withReplaced("x.c\",", "x.c/x.c\",")
                          .insert(std::string(fileText).size() + 3, R"(,"children":[],"name":"y")") +
                      "]"),
         [](const FileNode& node) {
             const FileNode child = node.childrenOrNone().front();
             return child.name() == "y" && child.url().path() == "/a b/x.c/x.c";
         }},
    };
    for (const auto& [text, isRead] : cases) {
        const auto result = decoded(text);
        ASSERT_TRUE(std::holds_alternative<FileNode>(result)) << text << std::get<DecodeError>(result).message();
        EXPECT_TRUE(isRead(std::get<FileNode>(result))) << text;
    }
}

TEST(FileNodeJson, RejectsEverythingElseAsAWhole)
{
    struct Group {
        const char* replaced;
        std::vector<std::string> replacements;
        const char* reason;
    };
    const std::string id = R"("0F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4E5")";
    const auto nested = [](std::string text, const std::string& url) {
        return text.replace(text.find("x.c\""), 4, url + '"');
    };
    const auto tenFolders = [&](const std::string& size) {
        const std::string folder =
            nested(withReplaced("42,\"isDirectory\":false", size + ",\"isDirectory\":true"), "x.c/d");
        std::string list = folder;
        for (int count = 1; count < 10; ++count) {
            list += ',' + folder;
        }
        return list;
    };
    const std::string folderOfLargeFile =
        nested(withReplaced("\"isDirectory\":false,\"fileCategory\":\"sourceCode\"",
                            R"("isDirectory":true,"fileCategory":"other","children":[)" +
                                nested(withReplaced("42", "9223372036854775807"), "x.c/d/f") + ']'),
               "x.c/d");
    const Group groups[] = {
        {R"("url":"file:///a%20b/x.c",)", {""}, "missing key \"url\""},
        {R"("name":"x.c",)", {""}, "missing key \"name\""},
        {R"("size":42,)", {"", R"("Size":42,)"}, "missing key \"size\""},
        {R"("isDirectory":false,)", {""}, "missing key \"isDirectory\""},
        {R"(,"fileCategory":"sourceCode")", {""}, "missing key \"fileCategory\""},
        {id.c_str(), {"\"0F1C\""}, "\"id\" is no UUID"},
        {id.c_str(), {"7"}, "type of \"id\", found an integer"},
        {"file:///a%20b/x.c", {"http://host/x", "/a b/x.c"}, "\"url\" is no file url"},
        {"\"x.c\"", {"null", "[]", "7"}, "type of \"name\", found "},
        {"42", {"\"42\"", "true", "{}"}, "type of \"size\", found a"},
        {"42", {"42.5", "42.0", "4e2", "0e302"}, "found a number that is not a 64-bit integer"},
        {"42", {"9223372036854775808", "-9223372036854775809", "99999999999999999999999"}, "beyond 64 bits"},
        {"42", {"1e309"}, "too big"},
        {"42", {"1.9e308"}, "a number is too large"},
        {"42", {"042"}, "comma"},
        {"42", {"-1", "-9223372036854775808"}, "a size is negative"},
        {"}", {R"(,"children":[)" + tenFolders("9223372036854775807") + "]}"}, "a sum of sizes"},
        {"}", {R"(,"children":[)" + tenFolders("999999999999999999") + "]}"}, "a sum of sizes"},
        {"}", {R"(,"children":[)" + folderOfLargeFile + ',' + folderOfLargeFile + "]}"}, "a sum of sizes"},
        {"42", {"NaN", ""}, "Invalid value"},
        {"\"x.c\"", {"\"\\x0005\""}, "escape"},
        {"false", {"0"}, "type of \"isDirectory\", found an integer"},
        {"sourceCode", {"sourcecode"}, "unknown \"fileCategory\""},
        {"\"sourceCode\"", {"5"}, "type of \"fileCategory\", found an integer"},
        {"}", {R"(,"children":{}})", R"(,"children":5})"}, "type of \"children\", found an"},
        {"}", {R"(,"children":[null]})", R"(,"children":[5]})", R"(,"children":[[]]})"}, "expected an object, found "},
        {"}", {R"(,"children":[)"s + fileText + ",{}]}"}, "missing key \"id\""},
        {"}", {"}x", "}"s + fileText}, "root"},
        {"}", {"}\0"s}, "something follows the value"},
        {"}", {",}"}, "name"},
        {"\"x.c\"", {"\"\x80\"", "\"long enough for words of eight \xC3\xA9\xED\xA0\x80\""}, "a text is not UTF-8"},
        {"\"name\"", {"\"new\":[\"\xFF\"],\"name\""}, "a text is not UTF-8"},
        {"\"name\"", {"\"new\xFF\":1,\"name\""}, "a key is not UTF-8"},
        {"\"x.c\"", {"\"\\ud800\""}, "surrogate"},
        {fileText, {""}, "empty"},
        {fileText, {"null", "\"x\"", "["s + fileText + "]"}, "expected an object, found "},
        {"{", {"\xEF\xBB\xBF{"}, "Invalid value"},
    };
    for (const auto& [replaced, replacements, reason] : groups) {
        for (const std::string& replacement : replacements) {
            const std::string text = withReplaced(replaced, replacement);
            const auto result = decoded(text);
            ASSERT_TRUE(std::holds_alternative<DecodeError>(result)) << text;
            const DecodeError& error = std::get<DecodeError>(result);
            EXPECT_NE(error.reason.find(reason), std::string::npos) << text << '\n' << error.reason;
            EXPECT_LE(error.offset, text.size()) << text;
        }
    }
    EXPECT_EQ(std::get<DecodeError>(decoded("{}")).message(), "missing key \"id\" at byte 1");
}

TEST(FileNodeJson, RejectsEveryTruncation)
{
    const std::string text = withChildren("["s + fileText + ',' + fileText + ']');
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_TRUE(std::holds_alternative<DecodeError>(decoded(text.substr(0, length)))) << length;
    }
    EXPECT_TRUE(std::holds_alternative<FileNode>(decoded(text)));
}

TEST(FileNodeJson, StaysBoundedWhateverItIsFed)
{
    constexpr qint64 gigabyte = 1'000'000'000;
    const std::string unknown = R"({"unknown":)";
    const std::tuple<std::string, std::string, qint64, qint64> cases[] = {
        {"", "[", gigabyte, 200'000},
        {unknown, "[", gigabyte, 300'000'000},
        {unknown + '"', "x", gigabyte, 400'000'000},
        {R"({"children":[)", R"({"children":[)", gigabyte, 5'000'000},
        {"{", R"("size":1,)", 9'000'000, 9'000'000},
        {"{", R"("unknown":{},)", 13'000'000, 13'000'000},
        {R"({"size":)", "1", 10'000'000, 10'000'000},
        {"", " ", 10'000'000, 10'000'000},
    };
    for (const auto& [start, piece, length, mostTaken] : cases) {
        Repeated source(start, piece, length);
        EXPECT_TRUE(std::holds_alternative<DecodeError>(decodeFileNode(source))) << start << piece;
        EXPECT_LE(source.bytesTaken(), mostTaken) << start << piece;
    }
}

TEST(FileNodeJson, ReportsASinkThatIsFull)
{
    QFile sink(QStringLiteral("/dev/full"));
    ASSERT_TRUE(sink.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    EXPECT_FALSE(encodeFileNode(test::chainOfFolders(500), sink));
    EXPECT_FALSE(encodeFileNode(treeFromText("end 1"), sink)) << "nor the last piece of a text";
}

TEST(FileNodeJson, ReportsASourceThatCannotBeRead)
{
    QBuffer closed;
    EXPECT_EQ(std::get<DecodeError>(decodeFileNode(closed)).reason, "the file cannot be read");
    Repeated broken("", " ", 200'000, -1);
    EXPECT_EQ(std::get<DecodeError>(decodeFileNode(broken)).reason, "the file cannot be read") << "nor its second half";
    for (const qint64 length : {0, 200'000}) {
        Repeated large("", " ", length, Repeated::outOfMemory);
        EXPECT_EQ(std::get<DecodeError>(decodeFileNode(large)).reason, "out of memory");
    }
}

TEST(FileNodeJson, WorksAtAnyDepthWithASmallStack)
{
    bool isEqual = false;
    test::runWithSmallStack([&] {
        const FileNode tree = test::chainOfFolders(10'000);
        const auto result = decoded(encoded(tree));
        isEqual = std::holds_alternative<FileNode>(result) && std::get<FileNode>(result) == tree;
    });
    EXPECT_TRUE(isEqual);
}

} // namespace
} // namespace morlaine
