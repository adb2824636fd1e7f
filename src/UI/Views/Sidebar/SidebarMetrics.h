#pragma once

/// The common metrics of the sidebar's rows, in points.
namespace morlaine::SidebarMetrics {

inline constexpr int inset = 4;   // from the edge to the frame of a row
inline constexpr int margin = 12; // from the edge to the content of a row

} // namespace morlaine::SidebarMetrics
