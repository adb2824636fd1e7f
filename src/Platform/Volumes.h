#pragma once

#include "Utilities/FileUrl.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morlaine {

/// A mounted file system that people know as a disk, a share or a stick.
struct MountedVolume {
    FileUrl url;                                   // where it is mounted
    std::string name;                              // its label, valid UTF-8; empty when it has none
    std::optional<std::int64_t> totalCapacity;     // bytes
    std::optional<std::int64_t> availableCapacity; // bytes that this user may still fill
};

/// The source of the volumes that are mounted now. Any thread.
class Volumes {
public:
    Volumes() = default;
    virtual ~Volumes() = default;
    Volumes(const Volumes&) = delete;
    Volumes& operator=(const Volumes&) = delete;

    /// The running system's.
    [[nodiscard]] static std::shared_ptr<const Volumes> native();

    /// The volumes in the order of the mount table, without those that are not meant for people: kernel and memory
    /// file systems, images of installed packages, what containers and boot loaders mount for themselves, triggers of
    /// automatic mounts, and further mounts of a volume that is listed already. Takes a moment at most: a volume that
    /// does not answer in time (a share whose server is gone, say) is left out.
    [[nodiscard]] virtual std::vector<MountedVolume> mountedVolumes() const = 0;
};

} // namespace morlaine
