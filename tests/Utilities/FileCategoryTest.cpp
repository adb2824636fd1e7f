#include "Utilities/FileCategory.h"

#include <gtest/gtest.h>

#include <string>

namespace morlaine {
namespace {

TEST(FileCategory, JudgesByTheLowerCasedExtensionAlone)
{
    using enum FileCategory::Case;
    const std::pair<std::string, FileCategory> cases[] = {
        {"jpg", image},
        {"Jpg", image},
        {"JPEG", image},
        {"m4v", video},
        {"m4a", audio},
        {"m", sourceCode},
        {"dmg", application},
        {"dmg-part", archive},
        {"7z", archive},
        {"json", sourceCode},
        {"html", sourceCode},
        {"md", document},
        {"PAGES-TEF", document},
        {"sqlite", system},
        {"bak", system},
        // The Kelvin sign is a capital k, but a dotted capital I keeps its dot.
        {"m\u212Av", video},
        {"\u0130n\u0130", other},
        {"", other},
        {"tar.gz", other},
        {".jpg", other},
        {"jpg ", other},
        {"pages-template", other},
        {"pages-te", other},
        {"\xE2\x84", other},
        {std::string("jpg\0", 4), other},
        {std::string(1'000'000, 'a'), other}};
    for (const auto& [extension, category] : cases) {
        EXPECT_EQ(FileCategory::from(extension), category) << extension.substr(0, 20);
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
    EXPECT_EQ(FileCategory(FileCategory::system).color(), (Color{0.50, 0.55, 0.60}));
}

} // namespace
} // namespace morlaine
