#pragma once

#include "Platform/FileSystem.h"
#include "Platform/Linux/FileDescriptor.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace morlaine {

/// The volume of a walk.
struct WalkedVolume {
    std::optional<std::uint64_t> identifier;
    std::uint64_t largestFile = std::uint64_t{1} << 53; // bytes; what the volume holds, but not more than 8 PiB
};

/// The values of the item `name` (NUL-terminated) relative to the open folder `folder`. A file gets the identifier of
/// `volume`, if that is known: stacked file systems may report the device of a lower layer for each file, and a file
/// that really is on another volume is a mount point.
[[nodiscard]] std::optional<ResourceValues> measure(int folder, const char* name, const WalkedVolume& volume);

/// The identifier that all items of an open folder's volume have.
[[nodiscard]] std::optional<std::uint64_t> volumeOf(int descriptor);

/// The volume of an open folder, the top of a walk. What a stacked file system holds is unknown: it reports the
/// capacity of one layer only.
[[nodiscard]] WalkedVolume walkedVolume(int descriptor);

/// A path whose beginning is opened if it is too long for one system call.
struct PathStart {
    FileDescriptor folder; // closed if `rest` is the whole path
    std::string_view rest; // the rest of the path, short enough for one call

    [[nodiscard]] int anchor() const noexcept;
};

/// Opens folders at the beginning of an overlong absolute path. The result points into `path`. Nothing if one of the
/// folders cannot be opened.
[[nodiscard]] std::optional<PathStart> startOfPath(std::string_view path);

} // namespace morlaine
