#pragma once

/// How assistive programs meet the sidebar's own widgets. Main thread only.
///
/// A PlaceRow is a button; that of a volume tells as its value how much of the volume is used, 0...100. A
/// RecentScansList is a list, whose rows open their scans when pressed; in each is a button that removes the scan.
namespace morlaine::SidebarAccessibility {

/// Makes Qt use it. Further calls do nothing.
void install();

} // namespace morlaine::SidebarAccessibility
