#include "Utilities/JsonEvents.h"

#include <array>

namespace morlaine {

std::string_view typeName(const JsonScalar& scalar) noexcept
{
    constexpr std::array<std::string_view, std::variant_size_v<JsonScalar>> names{
        "null",    "a boolean", "an integer", "an integer beyond 64 bits", "a number that is no 64-bit integer",
        "a string"};
    return names[scalar.index()];
}

} // namespace morlaine
