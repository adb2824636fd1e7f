#pragma once

namespace morlaine::bench {

/// Writing a tree of a million nodes to a cache file, and reading it back.
void registerJsonBenchmarks();

} // namespace morlaine::bench
