#pragma once

#include <functional>

namespace morlaine::bench {

class WatchedApplication;

/// The whole window on a generated tree of 300,000 nodes. `startApplication` is called before the first of them.
void registerWindowBenchmarks(const std::function<WatchedApplication&()>& startApplication);

} // namespace morlaine::bench
