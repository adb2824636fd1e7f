#pragma once

namespace morlaine {

class TreemapCanvas;

/// How assistive programs meet a TreemapCanvas: as a list with an item for each rectangle in the order of the layout,
/// which tells its name, its size as the value, its place and whether it is selected, and which can be pressed to
/// select it. Items are made when somebody asks for them. Main thread only.
namespace TreemapAccessibility {

/// Makes the toolkit know. Further calls do nothing.
void install();

/// Tells whoever listens that the canvas has another layout or another selected rectangle. Cost nothing while nobody
/// does.
void announceLayout(TreemapCanvas& canvas);
void announceSelection(TreemapCanvas& canvas);

} // namespace TreemapAccessibility

} // namespace morlaine
