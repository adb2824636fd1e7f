#pragma once

#include <functional>
#include <string>

namespace morlaine::bench {

/// The index of a generated tree and of the folder `tree`, keystrokes in it, and the end of a scan of `tree`, for which
/// `startApplication` is called.
void registerSearchBenchmarks(const std::string& tree, const std::function<void()>& startApplication);

} // namespace morlaine::bench
