#pragma once

namespace morlaine {

/// How assistive programs meet a TreemapCanvas: as a list with an item for each rectangle that a person could point at,
/// in the order of the layout, which tells its name, its size as the value, its place and whether it is selected, and
/// which can be pressed to select it. Items are made when somebody asks for them. Main thread only.
namespace TreemapAccessibility {

/// Makes Qt use it for every TreemapCanvas. Further calls do nothing.
void install();

} // namespace TreemapAccessibility

} // namespace morlaine
