#include "Utilities/FileCategory.h"

#include <gtest/gtest.h>

#include <string>

namespace morlaine {
namespace {

TEST(FileCategory, JudgesByTheLowerCasedExtensionAlone)
{
    struct Case {
        std::string extension;
        FileCategory category;
    };
    const Case cases[] = {{"jpg", FileCategory::image},
                          {"Jpg", FileCategory::image},
                          {"JPEG", FileCategory::image},
                          {"m4v", FileCategory::video},
                          {"m4a", FileCategory::audio},
                          {"m", FileCategory::sourceCode},
                          {"dmg", FileCategory::application},
                          {"dmg-part", FileCategory::archive},
                          {"7z", FileCategory::archive},
                          {"json", FileCategory::sourceCode},
                          {"html", FileCategory::sourceCode},
                          {"md", FileCategory::document},
                          {"PAGES-TEF", FileCategory::document},
                          {"sqlite", FileCategory::system},
                          {"bak", FileCategory::system},
                          // The Kelvin sign is a capital k, but a dotted capital I keeps its dot.
                          {"m\u212Av", FileCategory::video},
                          {"\u0130n\u0130", FileCategory::other},
                          {"", FileCategory::other},
                          {"tar.gz", FileCategory::other},
                          {".jpg", FileCategory::other},
                          {"jpg ", FileCategory::other},
                          {"pages-template", FileCategory::other},
                          {"pages-te", FileCategory::other},
                          {"\xE2\x84", FileCategory::other},
                          {std::string("jpg\0", 4), FileCategory::other},
                          {std::string(1'000'000, 'a'), FileCategory::other}};
    for (const Case& c : cases) {
        EXPECT_EQ(FileCategory::from(c.extension), c.category) << c.extension.substr(0, 20);
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
