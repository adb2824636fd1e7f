#pragma once

#include "Platform/Volumes.h"

#include <chrono>
#include <string>
#include <string_view>

namespace morlaine {

/// What there is to ask about mounts. Any thread, several at a time.
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

    /// The mount table in the form of /proc/self/mountinfo; empty when it cannot be read. Answers at once.
    [[nodiscard]] virtual std::string mountInfo() const = 0;

    /// The capacity of the file system mounted there; nothing when that fails or the mount point is no folder. May take
    /// for ever.
    [[nodiscard]] virtual std::optional<Capacity> capacity(const std::string& mountPoint) const = 0;

    /// The label of the device file, in the bytes that the disk has; empty when there is none. Answers at once.
    [[nodiscard]] virtual std::string label(const std::string& source) const = 0;
};

/// The kernel's answers.
class LinuxMountQueries final : public MountQueries {
public:
    [[nodiscard]] std::string mountInfo() const override;
    [[nodiscard]] std::optional<Capacity> capacity(const std::string& mountPoint) const override;
    [[nodiscard]] std::string label(const std::string& source) const override;
};

/// The name behind a link in /dev/disk/by-label, where bytes that may not stand in a file name are written `\x20`.
[[nodiscard]] std::string decodedLabel(std::string_view linkName);

class LinuxVolumes final : public Volumes {
public:
    /// All volumes that may not answer at once together have until `patience` is over.
    LinuxVolumes(std::shared_ptr<const MountQueries> queries, std::chrono::milliseconds patience);

    [[nodiscard]] std::vector<MountedVolume> mountedVolumes() const override;

private:
    std::shared_ptr<const MountQueries> m_queries;
    std::chrono::milliseconds m_patience;
};

} // namespace morlaine
