#pragma once

namespace morlaine {

/// An opaque colour: red, green and blue in the sRGB space, each in 0...1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

} // namespace morlaine
