#pragma once

namespace morlaine {

/// The accessible form of a TreemapCanvas: a list with an item for each rectangle that is large enough to point at, in
/// the order of the layout. An item has a name, its size as the value, a place and a selected state, and can be pressed
/// to select it and, for a folder, zoomed into. Items are made on request. Main thread only.
namespace TreemapAccessibility {

/// Registers it for all TreemapCanvas objects. Further calls do nothing.
void install();

} // namespace TreemapAccessibility

} // namespace morlaine
