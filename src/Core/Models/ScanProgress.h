#pragma once

#include <cstdint>
#include <string>

namespace morlaine {

/// A snapshot of the progress of a scan.
struct ScanProgress {
    std::string currentPath; // exact bytes
    std::int64_t filesCount = 0;
    std::int64_t directoriesCount = 0;
    std::int64_t totalSize = 0; // bytes
    double elapsedTime = 0;     // seconds
};

} // namespace morlaine
