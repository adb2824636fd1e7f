#include "Utilities/FileCategory.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <unordered_set>

namespace morlaine {
namespace {

/// The whole list once more, written in another form than the program's.
constexpr const char* listed[] = {
    "image jpg jpeg png gif tiff bmp heic webp raw svg psd",
    "video mp4 mkv mov avi wmv flv webm m4v",
    "audio mp3 wav m4a flac aac ogg wma",
    "application app dmg pkg exe ipa",
    "archive zip tar gz rar 7z bz2 xz dmg-part",
    "sourceCode swift m h c cpp py js ts html css go rs java kt sh json yaml xml php rb pl sql",
    "document pdf docx doc xlsx xls pptx ppt txt rtf pages numbers key csv md epub pages-tef",
    "system sys dll dylib so plist db sqlite ini log lock bak",
};

TEST(FileCategory, KnowsEveryListedExtension)
{
    for (const char* line : listed) {
        std::istringstream words(line);
        std::string category;
        words >> category;
        for (std::string extension; words >> extension;) {
            EXPECT_EQ(FileCategory::from(extension).rawValue(), category) << extension;
            extension[0] = static_cast<char>(std::toupper(extension[0]));
            EXPECT_EQ(FileCategory::from(extension).rawValue(), category) << extension;
        }
    }
}

TEST(FileCategory, IgnoresCaseOfEveryScript)
{
    EXPECT_EQ(FileCategory::from("JPG"), FileCategory::image);
    EXPECT_EQ(FileCategory::from("PAGES-TEF"), FileCategory::document);
    EXPECT_EQ(FileCategory::from("m\u212Av"), FileCategory::video) << "the Kelvin sign is a capital k";
    EXPECT_EQ(FileCategory::from("\u0130n\u0130"), FileCategory::other) << "a dotted I keeps its dot";
}

TEST(FileCategory, GivesOtherForWhatIsNotListed)
{
    const std::string veryLong(1'000'000, 'a');
    for (const std::string_view extension :
         {"", "tar.gz", ".jpg", "jpg ", "jp", "pages-template", "pages-te", "dmg-", "\xFF\xFE", "\xC3", "\xE2\x84"}) {
        EXPECT_EQ(FileCategory::from(extension), FileCategory::other) << extension;
    }
    EXPECT_EQ(FileCategory::from(veryLong), FileCategory::other);
    EXPECT_EQ(FileCategory::from(std::string_view("jpg\0", 4)), FileCategory::other);
}

TEST(FileCategory, TellsNamesAndColoursInDeclarationOrder)
{
    struct Case {
        const char* rawValue;
        const char* displayName;
        Color color;
    };
    constexpr Case cases[] = {
        {"image", "Images", {0.95, 0.40, 0.35}},       {"video", "Videos", {0.60, 0.40, 0.85}},
        {"audio", "Audio", {0.20, 0.70, 0.65}},        {"application", "Applications", {0.25, 0.55, 0.90}},
        {"archive", "Archives", {0.95, 0.75, 0.20}},   {"sourceCode", "Source Code", {0.30, 0.75, 0.40}},
        {"document", "Documents", {0.90, 0.55, 0.25}}, {"system", "System Files", {0.50, 0.55, 0.60}},
        {"other", "Other", {0.70, 0.72, 0.75}},
    };
    ASSERT_EQ(FileCategory::allCases.size(), std::size(cases));
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const FileCategory category = FileCategory::allCases[i];
        EXPECT_EQ(category.rawValue(), cases[i].rawValue);
        EXPECT_EQ(category.displayName(), cases[i].displayName);
        EXPECT_EQ(category.color(), cases[i].color);
        EXPECT_EQ(FileCategory::fromRawValue(cases[i].rawValue), category);
    }
    EXPECT_FALSE(FileCategory::fromRawValue("Images"));
    EXPECT_FALSE(FileCategory::fromRawValue("sourcecode"));
    EXPECT_FALSE(FileCategory::fromRawValue(""));
}

} // namespace
} // namespace morlaine
