#include "Utilities/Uuid.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <thread>
#include <unordered_set>

namespace morlaine {
namespace {

TEST(Uuid, ReadsAndWritesTheCanonicalForm)
{
    const std::string text = "0F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4E5";
    ASSERT_TRUE(Uuid::fromText(text));
    EXPECT_EQ(Uuid::fromText(text)->toString(), text);
    EXPECT_EQ(Uuid::fromText("0f1c2d3e-4a5b-4c6d-8e7f-90a1b2c3d4e5")->toString(), text);
    for (const char* wrong : {"", "0F1C2D3E", "0F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4E",
                              "0F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4E55", "0F1C2D3E04A5B-4C6D-8E7F-90A1B2C3D4E5",
                              "{F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4E5", "0F1C2D3G-4A5B-4C6D-8E7F-90A1B2C3D4E5",
                              "0F1C-2D3E4A5B-4C6D-8E7F-90A1B2C3D4E5", "0F1C2D3E-4A5B-4C6D-8E7F-90A1B2C3D4 5"}) {
        EXPECT_FALSE(Uuid::fromText(wrong)) << wrong;
    }
    for (std::size_t position = 0; position < text.size(); ++position) {
        for (int c = 0; c < 256; ++c) {
            std::string changed = text;
            changed[position] = static_cast<char>(c);
            const bool isRight = text[position] == '-' ? c == '-' : std::isxdigit(c) != 0;
            ASSERT_EQ(Uuid::fromText(changed).has_value(), isRight) << position << ' ' << c;
        }
    }
}

TEST(Uuid, IsDifferentEveryTimeOnEveryThread)
{
    std::unordered_set<Uuid> all;
    const auto draw = [&all] {
        for (int i = 0; i < 50'000; ++i) {
            all.insert(Uuid::random());
        }
    };
    draw();
    std::thread(draw).join();
    std::thread(draw).join();
    EXPECT_EQ(all.size(), 150'000U);
    EXPECT_EQ(all.begin()->toString()[14], '4') << "the version of random ids";
    EXPECT_NE(std::string_view("89AB").find(all.begin()->toString()[19]), std::string_view::npos);
}

} // namespace
} // namespace morlaine
