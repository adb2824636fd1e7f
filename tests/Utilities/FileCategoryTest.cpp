#include "Utilities/FileCategory.h"

#include <gtest/gtest.h>

#include <string>

namespace morlaine {
namespace {

TEST(FileCategory, JudgesByTheLowerCasedExtensionAlone)
{
    using enum FileCategory::Case;
    const std::pair<FileCategory, std::vector<std::string>> cases[] = {
        {image, {"jpg", "Jpg", "JPEG"}},
        {video, {"m4v", "m\u212Av"}}, // the Kelvin sign is a capital k, but a dotted capital I keeps its dot
        {audio, {"m4a"}},
        {application, {"dmg"}},
        {archive, {"7z", "ZIP", "dmg-part"}},
        {sourceCode, {"m", "json", "html"}},
        {document, {"md", "csv", "PAGES-TEF"}},
        {FileCategory::system, {"sqlite", "bak"}},
        {other, {"", "tar.gz", ".jpg", "jpg ", "\u0130n\u0130", "pages-template", "pages-te", "\xE2\x84"}},
        {other, {std::string("jpg\0", 4), std::string(1'000'000, 'a')}}};
    for (const auto& [category, extensions] : cases) {
        for (const std::string& extension : extensions) {
            EXPECT_EQ(FileCategory::from(extension), category) << extension.substr(0, 20);
        }
    }
}

TEST(FileCategory, IsFoundAgainByItsRawValue)
{
    for (const FileCategory category : FileCategory::allCases) {
        EXPECT_EQ(FileCategory::fromRawValue(category.rawValue()), category);
        EXPECT_FALSE(FileCategory::fromRawValue(category.displayName())) << "the label is for people";
    }
    EXPECT_EQ(FileCategory::allCases.front(), FileCategory::image);
    EXPECT_EQ(FileCategory::allCases.back(), FileCategory::other);
    EXPECT_EQ(FileCategory(FileCategory::sourceCode).displayName(), "Source Code");
    const Color colors[] = {{0.95, 0.40, 0.35}, {0.60, 0.40, 0.85}, {0.20, 0.70, 0.65},
                            {0.25, 0.55, 0.90}, {0.95, 0.75, 0.20}, {0.30, 0.75, 0.40},
                            {0.90, 0.55, 0.25}, {0.50, 0.55, 0.60}, {0.70, 0.72, 0.75}};
    for (const FileCategory category : FileCategory::allCases) {
        EXPECT_EQ(category.color(), colors[category]) << category.rawValue();
    }
}

} // namespace
} // namespace morlaine
