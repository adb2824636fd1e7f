#pragma once

#include <functional>
#include <string>

namespace morlaine::bench {

/// The treemap as it is painted, on 1600 x 1000 pixels: 50,000 files in folders of folders, and the tree at `tree`.
/// `startApplication` is called before the first of them; the others run without an application.
void registerTreemapViewBenchmarks(const std::string& tree, const std::function<void()>& startApplication);

} // namespace morlaine::bench
