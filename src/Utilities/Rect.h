#pragma once

namespace morlaine {

/// A rectangle in points: `x` grows to the right and `y` downwards from its top left corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

} // namespace morlaine
