#pragma once

#include "Utilities/FileUrl.h"
#include "Utilities/Uuid.h"

#include <cstdint>
#include <string>

namespace morlaine {

/// A mounted volume in the sidebar.
struct VolumeInfo {
    Uuid id;                    // new for each record
    FileUrl url;                // the mount point
    std::string name;           // valid UTF-8
    std::int64_t totalSize = 0; // bytes
    std::int64_t freeSize = 0;  // bytes

    [[nodiscard]] std::string formattedFreeSize() const;
    [[nodiscard]] std::string formattedTotalSize() const;

    /// The used share, 0...1; 0 for a volume without a size.
    [[nodiscard]] double percentUsed() const;
};

} // namespace morlaine
