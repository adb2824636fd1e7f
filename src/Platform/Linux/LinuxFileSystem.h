#pragma once

#include "Platform/FileSystem.h"

namespace morlaine {

/// The file system through Linux's own calls: one statx for each item (a few more for what may be a package), folders
/// read with large getdents64 calls and measured relative to their descriptor. Nothing is ever opened but folders, and
/// no link is followed below the folder at which a walk begins.
class LinuxFileSystem final : public FileSystem {
public:
    [[nodiscard]] std::optional<ResourceValues> resourceValues(const FileUrl& url) const override;
    [[nodiscard]] std::optional<std::uint64_t> volumeIdentifier(const FileUrl& url) const override;
    [[nodiscard]] std::size_t usefulReaders() const noexcept override;
    [[nodiscard]] std::unique_ptr<Folder> folder(const FileUrl& url) const override;
    [[nodiscard]] FileUrl resolvingSymlinks(const FileUrl& url) const override;
};

} // namespace morlaine
