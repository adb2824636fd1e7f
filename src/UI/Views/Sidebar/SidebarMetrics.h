#pragma once

/// What the rows of the sidebar have in common, in points.
namespace morlaine::SidebarMetrics {

inline constexpr int inset = 4;   // between the edge and what frames a row
inline constexpr int margin = 12; // between the edge and what a row shows

} // namespace morlaine::SidebarMetrics
