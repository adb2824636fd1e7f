#pragma once

namespace morlaine {

/// A rectangle in points: `x` and `y` of its top left corner; `x` grows to the right, `y` downwards.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

} // namespace morlaine
