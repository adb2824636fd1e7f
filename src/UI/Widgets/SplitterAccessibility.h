#pragma once

/// How assistive programs meet every QSplitter: its parts and the dividers between them in the order of reading,
/// instead of the reverse in which Qt stacks them. Main thread only.
namespace morlaine::SplitterAccessibility {

/// Makes Qt use it. Further calls do nothing.
void install();

} // namespace morlaine::SplitterAccessibility
