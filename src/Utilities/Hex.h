#pragma once

#include <string_view>

namespace morlaine {

/// The upper-case digit of a value from 0 to 15.
[[nodiscard]] constexpr char hexDigit(unsigned value)
{
    return std::string_view("0123456789ABCDEF")[value];
}

/// The value of a hexadecimal digit of either case; -1 for any other character.
[[nodiscard]] constexpr int hexValue(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return -1;
}

} // namespace morlaine
