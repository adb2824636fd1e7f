#pragma once

#include "Utilities/CheckedMath.h"

#include <chrono>
#include <cstdint>

namespace morlaine {

/// The counts of one walk. Belongs to the walking thread.
struct ScanStats {
    using Clock = std::chrono::steady_clock;

    std::int64_t filesCount = 0;                     // files and packages
    std::int64_t dirsCount = 0;                      // folders entered
    std::int64_t totalSize = 0;                      // bytes of the counted files and packages
    Clock::time_point lastUpdateTime = Clock::now(); // of the last progress report

    void countFile(std::int64_t size) noexcept
    {
        filesCount = checkedAdd(filesCount, 1);
        totalSize = checkedAdd(totalSize, size);
    }

    void countDirectory() noexcept { dirsCount = checkedAdd(dirsCount, 1); }
};

} // namespace morlaine
