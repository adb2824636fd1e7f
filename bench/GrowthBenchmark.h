#pragma once

namespace morlaine::bench {

/// Trees of one, three and ten million files, scanned from memory: whether time and memory grow in proportion.
void registerGrowthBenchmarks();

} // namespace morlaine::bench
