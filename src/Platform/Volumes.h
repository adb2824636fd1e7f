#pragma once

#include "Utilities/FileUrl.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morlaine {

/// A mounted file system that is a disk, a share or a stick to the user.
struct MountedVolume {
    FileUrl url;                                   // where it is mounted
    std::string name;                              // its label, valid UTF-8; empty if it has none
    std::optional<std::int64_t> totalCapacity;     // bytes
    std::optional<std::int64_t> availableCapacity; // bytes available to this user
};

/// Lists the mounted volumes. Any thread.
class Volumes {
public:
    Volumes() = default;
    virtual ~Volumes() = default;
    Volumes(const Volumes&) = delete;
    Volumes& operator=(const Volumes&) = delete;

    /// The implementation for this system.
    [[nodiscard]] static std::shared_ptr<const Volumes> native();

    /// The volumes in the order of the mount table. Leaves out kernel and memory file systems, images of installed
    /// packages, mounts of containers and boot loaders, automount triggers, and further mounts of a listed volume. Also
    /// leaves out volumes that do not answer in time, such as a share whose server is gone, so that the call takes a
    /// moment at most.
    [[nodiscard]] virtual std::vector<MountedVolume> mountedVolumes() const = 0;
};

} // namespace morlaine
