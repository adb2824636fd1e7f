#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace morlaine {

/// The members of a node's JSON object, in the order in which they are written.
enum class JsonKey : std::uint8_t { id, url, name, size, isDirectory, fileCategory, children, unknown };

inline constexpr std::array<std::string_view, 7> jsonKeyNames{"id",          "url",          "name",    "size",
                                                              "isDirectory", "fileCategory", "children"};

/// All members but the last are required.
inline constexpr std::uint8_t requiredKeyCount = 6;

[[nodiscard]] constexpr std::string_view nameOf(JsonKey key)
{
    return jsonKeyNames[static_cast<std::size_t>(key)];
}

[[nodiscard]] constexpr JsonKey keyNamed(std::string_view name)
{
    for (std::size_t i = 0; i < jsonKeyNames.size(); ++i) {
        if (jsonKeyNames[i] == name) {
            return static_cast<JsonKey>(i);
        }
    }
    return JsonKey::unknown;
}

} // namespace morlaine
