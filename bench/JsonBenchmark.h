#pragma once

#include <string>

namespace morlaine::bench {

/// Writing the tree at `tree` as JSON and reading it back.
void registerJsonBenchmarks(const std::string& tree);

} // namespace morlaine::bench
