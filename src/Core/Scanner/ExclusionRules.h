#pragma once

#include "Platform/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morlaine {

/// What a walk leaves out: the places where systems mount volumes or show items a second time, and other volumes.
struct ExclusionRules {
    /// Where a longer path than this is cut off there, no more is excluded by its text than without cutting.
    static constexpr std::size_t decisiveLength = 16;

    std::string rootPath; // standardised, links resolved; never left out
    std::optional<std::uint64_t> rootVolumeID;

    /// `path` is standardised.
    [[nodiscard]] bool isExcluded(std::string_view path, const ResourceValues& values) const;
};

} // namespace morlaine
