#include "Utilities/JsonEvents.h"

#include <array>
#include <charconv>
#include <system_error>

namespace morlaine {

std::string_view typeName(const JsonScalar& scalar) noexcept
{
    constexpr std::array<std::string_view, std::variant_size_v<JsonScalar>> names{
        "null",    "a boolean", "an integer", "an integer beyond 64 bits", "a number that is not a 64-bit integer",
        "a string"};
    return names[scalar.index()];
}

std::optional<JsonScalar> numberFromText(std::string_view text) noexcept
{
    const char* const end = text.data() + text.size();
    const bool isInteger = text.find_first_of(".eE") == std::string_view::npos;
    if (std::int64_t integer = 0; isInteger && std::from_chars(text.data(), end, integer).ec == std::errc()) {
        return integer;
    }
    double real = 0;
    if (std::from_chars(text.data(), end, real).ec != std::errc()) {
        return std::nullopt;
    }
    return isInteger ? JsonScalar(HugeInteger{real}) : JsonScalar(real);
}

} // namespace morlaine
