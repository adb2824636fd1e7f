#pragma once

#include "Platform/FileSystem.h"
#include "Platform/Linux/FileDescriptor.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace morlaine {

/// What is known of the volume on which a walk goes.
struct WalkedVolume {
    std::optional<std::uint64_t> identifier;
    std::uint64_t capacity = std::numeric_limits<std::uint64_t>::max(); // bytes, free and used; the most when unknown
};

/// The values of the item `name` (NUL-terminated) relative to the open folder `folder`, by one statx. A file counts
/// as part of `volume` where that has an identifier: file systems that are stacked on others may give each file the
/// device of the one it comes from, and a file that really is on another volume is a mount point.
[[nodiscard]] std::optional<ResourceValues> measure(int folder, const char* name, const WalkedVolume& volume);

/// The number under which all items of an open folder's volume are known.
[[nodiscard]] std::optional<std::uint64_t> volumeOf(int descriptor);

/// The volume of an open folder at which a walk begins. File systems that are stacked on others tell the capacity of
/// one of them only, so theirs is unknown.
[[nodiscard]] WalkedVolume walkedVolume(int descriptor);

/// A path that the kernel may find too long, taken as far as it is needed.
struct PathStart {
    FileDescriptor folder; // closed when `rest` is the whole path
    std::string_view rest; // what remains to be named, short enough for one call

    [[nodiscard]] int anchor() const noexcept;
};

/// Opens the folders at the beginning of an overlong absolute path, of which `path` stays the owner. Nothing when one
/// of them cannot be opened.
[[nodiscard]] std::optional<PathStart> startOfPath(std::string_view path);

} // namespace morlaine
