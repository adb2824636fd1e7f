#pragma once

#include "Platform/FileSystem.h"

namespace morlaine {

/// The file system by Linux system calls: one statx for each item (a few more for possible packages), folders listed by
/// large getdents64 calls, entries measured relative to the folder's descriptor. Opens nothing but folders, and follows
/// no link below the top of a walk.
class LinuxFileSystem final : public FileSystem {
public:
    [[nodiscard]] std::optional<ResourceValues> resourceValues(const FileUrl& url) const override;
    [[nodiscard]] std::optional<std::uint64_t> volumeIdentifier(const FileUrl& url) const override;
    [[nodiscard]] std::size_t usefulReaders() const noexcept override;
    [[nodiscard]] std::unique_ptr<Folder> folder(const FileUrl& url) const override;
    [[nodiscard]] FileUrl resolvingSymlinks(const FileUrl& url) const override;
};

} // namespace morlaine
