#pragma once

#include <string>

namespace morlaine::bench {

/// The layout of wide folders and of the tree at `tree`, all in 1600 x 1000 points.
void registerTreemapBenchmarks(const std::string& tree);

} // namespace morlaine::bench
