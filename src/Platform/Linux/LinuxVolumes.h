#pragma once

#include "Platform/Volumes.h"

#include <chrono>
#include <string>
#include <string_view>

namespace morlaine {

/// Queries about mounts, a seam for tests. Any thread, several at a time.
class MountQueries {
public:
    struct Capacity {
        std::optional<std::int64_t> total;     // bytes
        std::optional<std::int64_t> available; // bytes
    };

    MountQueries() = default;
    virtual ~MountQueries() = default;
    MountQueries(const MountQueries&) = delete;
    MountQueries& operator=(const MountQueries&) = delete;

    /// The mount table in the format of /proc/self/mountinfo; empty if it cannot be read. Never blocks.
    [[nodiscard]] virtual std::string mountInfo() const = 0;

    /// The capacity of the file system at a mount point; nothing if the query fails or the mount point is not a folder.
    /// May block forever.
    [[nodiscard]] virtual std::optional<Capacity> capacity(const std::string& mountPoint) const = 0;

    /// The label of a device file, in the bytes on the disk; empty if it has none. Never blocks.
    [[nodiscard]] virtual std::string label(const std::string& source) const = 0;
};

/// The kernel's and udev's answers.
class LinuxMountQueries final : public MountQueries {
public:
    [[nodiscard]] std::string mountInfo() const override;
    [[nodiscard]] std::optional<Capacity> capacity(const std::string& mountPoint) const override;
    [[nodiscard]] std::string label(const std::string& source) const override;
};

/// Decodes the name of a link in /dev/disk/by-label, in which udev writes special bytes as `\x20`.
[[nodiscard]] std::string decodedLabel(std::string_view linkName);

class LinuxVolumes final : public Volumes {
public:
    /// The volumes that may block have `patience` in all to answer.
    LinuxVolumes(std::shared_ptr<const MountQueries> queries, std::chrono::milliseconds patience);

    [[nodiscard]] std::vector<MountedVolume> mountedVolumes() const override;

private:
    std::shared_ptr<const MountQueries> m_queries;
    std::chrono::milliseconds m_patience;
};

} // namespace morlaine
