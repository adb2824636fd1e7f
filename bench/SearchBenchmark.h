#pragma once

#include <string>

namespace morlaine::bench {

/// The index of a generated tree and of the folder `tree`, keystrokes in it, and the end of a scan of `tree`.
void registerSearchBenchmarks(const std::string& tree);

} // namespace morlaine::bench
