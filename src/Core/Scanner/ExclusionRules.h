#pragma once

#include "Platform/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morlaine {

/// What a walk excludes: folders in which systems mount volumes or repeat items, and other volumes.
struct ExclusionRules {
    /// A path may be cut to this length: a longer path is excluded by its text only if the cut one is.
    static constexpr std::size_t decisiveLength = 16;

    std::string rootPath; // standardised, links resolved; never excluded
    std::optional<std::uint64_t> rootVolumeID;

    /// `path` is standardised.
    [[nodiscard]] bool isExcluded(std::string_view path, const ResourceValues& values) const;
};

} // namespace morlaine
