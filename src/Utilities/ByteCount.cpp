#include "Utilities/ByteCount.h"

#include <array>
#include <string_view>

namespace morlaine {

namespace {

struct Unit {
    std::string_view name;
    std::uint64_t bytes;
    std::uint64_t steps; // steps of the last shown decimal in one unit
    std::uint64_t decimals;
};

constexpr std::array<Unit, 6> units{{
    {"KB", 1'000, 1, 0},
    {"MB", 1'000'000, 10, 1},
    {"GB", 1'000'000'000, 100, 2},
    {"TB", 1'000'000'000'000, 100, 2},
    {"PB", 1'000'000'000'000'000, 100, 2},
    {"EB", 1'000'000'000'000'000'000, 100, 2},
}};

std::string decimalText(std::uint64_t steps, const Unit& unit)
{
    std::string text = std::to_string(steps / unit.steps);
    if (const std::uint64_t fraction = steps % unit.steps; fraction != 0) {
        const std::string digits = std::to_string(fraction);
        text += '.' + std::string(unit.decimals - digits.size(), '0') + digits;
        text.erase(text.find_last_not_of('0') + 1);
    }
    return text;
}

std::string magnitudeText(std::uint64_t bytes)
{
    if (bytes < 1000) {
        return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
    }
    for (const Unit& unit : units) {
        const std::uint64_t step = unit.bytes / unit.steps;
        const std::uint64_t rounded = bytes / step + (bytes % step >= step / 2 ? 1 : 0);
        if (rounded < 1000 * unit.steps || &unit == &units.back()) {
            return decimalText(rounded, unit) + ' ' + std::string(unit.name);
        }
    }
    return {};
}

} // namespace

std::string byteCountText(std::int64_t bytes)
{
    if (bytes == 0) {
        return "Zero KB";
    }
    const auto unsignedBytes = static_cast<std::uint64_t>(bytes);
    return bytes < 0 ? '-' + magnitudeText(0 - unsignedBytes) : magnitudeText(unsignedBytes);
}

} // namespace morlaine
