#pragma once

#include "Utilities/FileUrl.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

/// The properties of one item, without opening it or following a link. A value that the system does not provide is
/// absent, a flag is false. If an entry of a folder claims a larger allocation than the whole volume, its sizes are
/// absent: a file system that reports one wrong size may report others.
struct ResourceValues {
    std::optional<std::int64_t> fileSize;           // bytes of content; absent for a folder
    std::optional<std::int64_t> totalAllocatedSize; // bytes on the volume, everything that belongs to the item
    std::optional<std::int64_t> allocatedSize;      // bytes on the volume
    std::optional<std::uint64_t> volumeIdentifier;  // equal for all items of a volume
    std::optional<bool> isDirectory;                // also true for packages and for mount points that are folders
    bool isPackage = false;                         // a folder that is shown as one item, such as an application bundle
    bool isSymbolicLink = false;
    bool isVolume = false; // a mount point; a folder or a file

    friend bool operator==(const ResourceValues&, const ResourceValues&) = default;
};

/// The entries of a folder in the order of the system's listing, each with its values. An entry needs 32 bytes besides
/// its name, unless its values are unusual.
class FolderContents {
public:
    struct Entry {
        std::string_view name; // exact bytes, valid as long as the contents
        std::optional<ResourceValues>
            values; // nothing if it could not be measured, for example because it has vanished
    };

    [[nodiscard]] std::size_t size() const noexcept { return m_entries.size(); }
    [[nodiscard]] Entry operator[](std::size_t index) const noexcept { return {name(index), values(index)}; }
    [[nodiscard]] std::string_view name(std::size_t index) const noexcept
    {
        return {m_names.data() + m_entries[index].nameOffset, m_entries[index].nameLength};
    }
    [[nodiscard]] std::optional<ResourceValues> values(std::size_t index) const noexcept;

    /// Whether the entry is known to be a folder.
    [[nodiscard]] bool isDirectory(std::size_t index) const noexcept
    {
        return (m_entries[index].flags & Stored::directory) != 0;
    }

    void append(std::string_view name, const std::optional<ResourceValues>& values);

    /// The memory in use, in bytes.
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return m_entries.size() * sizeof(Stored) + m_names.size() + m_unusual.size() * sizeof(ResourceValues);
    }

    /// Makes it empty for another folder; keeps the memory.
    void clear() noexcept;

private:
    /// One entry. An absent number is stored as 0.
    struct Stored {
        enum Flag : std::uint32_t {
            isMeasured = 0x01,
            hasFileSize = 0x02,
            hasAllocatedSizes = 0x04, // both, and equal
            hasVolume = 0x08,         // m_volume
            knowsIsDirectory = 0x10,
            directory = 0x20,
            isPackage = 0x40,
            isSymbolicLink = 0x80,
            isVolume = 0x100,
            isUnusual = 0x200, // the values are in m_unusual at the index `fileSize`
        };

        std::size_t nameOffset;
        std::uint32_t nameLength;
        std::uint32_t flags;
        std::int64_t fileSize;
        std::int64_t allocatedSize;
    };

    [[nodiscard]] bool isUsual(const ResourceValues& values) const noexcept;

    std::string m_names;
    std::vector<Stored> m_entries;
    std::vector<ResourceValues> m_unusual;
    std::optional<std::uint64_t> m_volume; // of the first entry with one
};

/// Called with the entries listed so far, between the system calls that list a large folder. May block. Returning false
/// ends the listing as failed.
using ListingPace = std::function<bool(const FolderContents& soFar)>;

/// A folder in a walk. Subfolders are opened relative to their parent, which must outlive them. So a walk stays in its
/// tree even if a folder above is renamed or replaced by a link. Several threads may list different folders of a walk
/// at once, once the top has been listed.
class Folder {
public:
    Folder() = default;
    virtual ~Folder() = default;
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    /// Puts all entries except `.` and `..` into `contents`, which must be empty. Returns false if the folder cannot be
    /// listed to its end, and soon after `stop` was triggered; `contents` is then unspecified. Call once.
    [[nodiscard]] virtual bool list(FolderContents& contents, const std::stop_token& stop, const ListingPace& pace) = 0;
    [[nodiscard]] bool list(FolderContents& contents, const std::stop_token& stop) { return list(contents, stop, {}); }

    /// Whether the listing failed for lack of file descriptors, so that it may succeed later.
    [[nodiscard]] virtual bool lackedDescriptors() const noexcept { return false; }

    /// The subfolder of that name. Never fails: listing it fails if it does not exist, is not a folder or is a mount
    /// point.
    [[nodiscard]] virtual std::unique_ptr<Folder> folder(std::string_view name) = 0;
};

/// What a walk needs of the operating system. Stateless; any thread.
class FileSystem {
public:
    FileSystem() = default;
    virtual ~FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;

    /// The implementation for this system.
    [[nodiscard]] static std::shared_ptr<const FileSystem> native();

    /// The values of one item; nothing if they cannot be read.
    [[nodiscard]] virtual std::optional<ResourceValues> resourceValues(const FileUrl& url) const = 0;

    /// The identifier of the volume that contains the item; nothing if it cannot be read.
    [[nodiscard]] virtual std::optional<std::uint64_t> volumeIdentifier(const FileUrl& url) const = 0;

    /// How many threads should list folders ahead of a walk.
    [[nodiscard]] virtual std::size_t usefulReaders() const noexcept { return 0; }

    /// The top folder of a walk.
    [[nodiscard]] virtual std::unique_ptr<Folder> folder(const FileUrl& url) const = 0;

    /// The same location with symbolic links resolved; unchanged if that fails.
    [[nodiscard]] virtual FileUrl resolvingSymlinks(const FileUrl& url) const = 0;
};

} // namespace morlaine
