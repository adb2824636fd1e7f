#include "UI/Styles/Contrast.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace morlaine {

namespace {

/// The light of each component from 0 to 255.
std::array<double, 256> makeLinear()
{
    std::array<double, 256> table{};
    for (std::size_t component = 0; component < table.size(); ++component) {
        const double value = static_cast<double>(component) / 255;
        table[component] = value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    }
    return table;
}

double luminance(const QColor& color)
{
    static const std::array<double, 256> linear = makeLinear();
    const auto of = [](int component) { return linear[static_cast<std::size_t>(component)]; };
    return 0.2126 * of(color.red()) + 0.7152 * of(color.green()) + 0.0722 * of(color.blue());
}

int mixedComponent(int over, int under, double share)
{
    return static_cast<int>(std::lround(over * share + under * (1 - share)));
}

} // namespace

double contrastRatio(const QColor& first, const QColor& second)
{
    const auto [darker, lighter] = std::minmax({luminance(first), luminance(second)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor mixed(const QColor& over, const QColor& under, double share)
{
    return {mixedComponent(over.red(), under.red(), share), mixedComponent(over.green(), under.green(), share),
            mixedComponent(over.blue(), under.blue(), share)};
}

QColor receded(const QColor& text, const QColor& background, double share, double leastContrast)
{
    constexpr double step = 0.02;
    for (double kept = share; kept < 1; kept += step) {
        const QColor color = mixed(text, background, kept);
        if (contrastRatio(color, background) >= leastContrast) {
            return color;
        }
    }
    return text;
}

QColor strengthened(const QColor& color, const QColor& text, const QColor& background, double leastContrast)
{
    constexpr double step = 0.02;
    for (double share = 0; share < 1; share += step) {
        const QColor candidate = mixed(text, color, share);
        if (contrastRatio(candidate, background) >= leastContrast) {
            return candidate;
        }
    }
    return text;
}

} // namespace morlaine
