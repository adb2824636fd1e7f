#pragma once

#include "Utilities/FileUrl.h"
#include "Utilities/Uuid.h"

#include <cstdint>
#include <string>

namespace morlaine {

/// One mounted volume as the sidebar lists it.
struct VolumeInfo {
    Uuid id;                    // fresh for each record
    FileUrl url;                // where it is mounted
    std::string name;           // valid UTF-8
    std::int64_t totalSize = 0; // bytes
    std::int64_t freeSize = 0;  // bytes

    [[nodiscard]] std::string formattedFreeSize() const;
    [[nodiscard]] std::string formattedTotalSize() const;

    /// The share in use as a fraction of 1; 0 for a volume without a size.
    [[nodiscard]] double percentUsed() const;
};

} // namespace morlaine
