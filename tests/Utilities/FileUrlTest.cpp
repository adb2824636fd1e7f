#include "Utilities/FileUrl.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace morlaine {
namespace {

using namespace std::string_literals;

std::string everyByteOfAPath()
{
    std::string path = "/";
    for (int byte = 1; byte < 256; ++byte) {
        path += static_cast<char>(byte);
    }
    return path + "end";
}

TEST(FileUrl, PrintsAndParsesExactBytes)
{
    const std::pair<std::string, std::string> cases[] = {
        {"/", "file:///"},
        {"/usr/share", "file:///usr/share"},
        {"/a folder/50%/ü?#[x]", "file:///a%20folder/50%25/%C3%BC%3F%23%5Bx%5D"},
        {"/!$&'()*+,;=:@-._~", "file:///!$&'()*+,;=:@-._~"},
        {"/line\nbreak\xFF", "file:///line%0Abreak%FF"},
    };
    for (const auto& [path, text] : cases) {
        const FileUrl url = FileUrl::fromPath(path);
        EXPECT_EQ(url.absoluteString(), text);
        EXPECT_EQ(url.path(), path);
        EXPECT_EQ(FileUrl::parse(text), url);
    }
    const FileUrl every = FileUrl::fromPath(everyByteOfAPath());
    ASSERT_TRUE(FileUrl::parse(every.absoluteString()));
    EXPECT_EQ(FileUrl::parse(every.absoluteString())->path(), everyByteOfAPath());
}

TEST(FileUrl, ParsesWhatOthersWriteAndRejectsWhatIsNoFile)
{
    EXPECT_EQ(FileUrl::parse("file://localhost/x%2f%c3%A9")->path(), "/x/é");
    EXPECT_EQ(FileUrl::parse("file:///plain ü")->path(), "/plain ü");
    for (const std::string& text :
         {""s, "/usr"s, "file:"s, "file://"s, "file:/usr"s, "file://host/x"s, "file://localhostage/x"s, "FILE"s,
          "http:///x"s, "file:///%"s, "file:///%4"s, "file:///%G0"s, "file:///%00"s, "file:///a\0b"s, "file:///a?b"s,
          "file:///a#b"s, "file:///%-1"s}) {
        EXPECT_FALSE(FileUrl::parse(text)) << text;
    }
}

TEST(FileUrl, YieldsItsParts)
{
    constexpr std::tuple<const char*, const char*, const char*> cases[] = {{"/", "", ""},
                                                                           {"///", "", ""},
                                                                           {"/a/photo.JPG", "photo.JPG", "JPG"},
                                                                           {"/a/photo.JPG///", "photo.JPG", "JPG"},
                                                                           {"/archive.tar.gz", "archive.tar.gz", "gz"},
                                                                           {"/home/.bashrc", ".bashrc", ""},
                                                                           {"/home/.config.bak", ".config.bak", "bak"},
                                                                           {"/name.", "name.", ""},
                                                                           {"/name", "name", ""},
                                                                           {"/a.b/name", "name", ""},
                                                                           {"/x/..", "..", ""}};
    for (const auto& [path, component, extension] : cases) {
        const FileUrl url = FileUrl::fromPath(path);
        EXPECT_EQ(url.lastPathComponent(), component) << path;
        EXPECT_EQ(url.pathExtension(), extension) << path;
    }
    EXPECT_EQ(FileUrl::fromPath("/a/b//").path(), "/a/b");
    EXPECT_EQ(FileUrl::fromPath("/a/b/").absoluteString(), "file:///a/b/") << "the text stays as it was given";
    EXPECT_EQ(FileUrl::fromPath("/a\0b"s).path(), "/a");
}

TEST(FileUrl, TakesRelativePathsFromTheWorkingDirectory)
{
    const std::string here = std::filesystem::current_path().native();
    EXPECT_EQ(FileUrl::fromPath("sub").path(), here + "/sub");
    EXPECT_EQ(FileUrl::fromPath(".").standardized().path(), here);
    EXPECT_EQ(FileUrl::fromPath("").path(), here);
}

TEST(FileUrl, AppendsComponents)
{
    const FileUrl folder = FileUrl::fromPath("/a/b/");
    const FileUrl child = folder.appending("c").appending("d.txt");
    EXPECT_EQ(child.path(), "/a/b/c/d.txt");
    EXPECT_EQ(child.absoluteString(), "file:///a/b/c/d.txt");
    EXPECT_EQ(FileUrl::fromPath("/").appending("x").path(), "/x");
    EXPECT_EQ(FileUrl::fromPath("/a//").appending("x").path(), "/a/x");
    EXPECT_NE(folder, FileUrl::fromPath("/a/b")) << "the text makes the difference";
}

TEST(FileUrl, StandardizesWithoutLookingAtLinks)
{
    constexpr std::pair<const char*, const char*> cases[] = {
        {"/", "/"},           {"//", "/"},           {"/a/b/", "/a/b"}, {"/a//b", "/a/b"}, {"/./a/.", "/a"},
        {"/a/../b", "/b"},    {"/../../a", "/a"},    {"/a/b/..", "/a"}, {"/a/..", "/"},    {"/.hidden", "/.hidden"},
        {"/a/...", "/a/..."}, {"/a/b/../../..", "/"}};
    for (const auto& [path, standard] : cases) {
        EXPECT_EQ(FileUrl::fromPath(path).standardized().path(), standard) << path;
    }
}

} // namespace
} // namespace morlaine
