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

/// What the file system tells of one item without opening it or following it. A value that the system does not
/// give is absent; a flag that it does not give is false. An entry of a folder whose allocation is said to be larger
/// than the whole volume has neither allocated sizes nor a file size: a file system that lies about one lies about all.
struct ResourceValues {
    std::optional<std::int64_t> fileSize;           // bytes of content; absent for a folder
    std::optional<std::int64_t> totalAllocatedSize; // bytes on the volume, all that belongs to the item
    std::optional<std::int64_t> allocatedSize;      // bytes on the volume
    std::optional<std::uint64_t> volumeIdentifier;  // equal for all items of a volume
    std::optional<bool> isDirectory; // true for packages and for folders on which something is mounted, too
    bool isPackage = false;          // a folder that people take for one thing, such as an application bundle
    bool isSymbolicLink = false;
    bool isVolume = false; // a folder or file on which something is mounted

    friend bool operator==(const ResourceValues&, const ResourceValues&) = default;
};

/// The contents of a folder in the order in which the system listed them, the values of each entry fetched. An entry
/// takes 32 bytes beside its name where its values are like those of its neighbours.
class FolderContents {
public:
    struct Entry {
        std::string_view name;                // exact bytes, valid while the contents live
        std::optional<ResourceValues> values; // nothing when the entry could not be measured (it has vanished, say)
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
        return (m_entries[index].flags & Stored::isDirectory) != 0;
    }

    void append(std::string_view name, const std::optional<ResourceValues>& values);

    /// What the contents take in memory, in bytes.
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return m_entries.size() * sizeof(Stored) + m_names.size() + m_unusual.size() * sizeof(ResourceValues);
    }

    /// Empty again, ready for another folder; the memory is kept.
    void clear() noexcept;

private:
    /// One entry. An absent number is 0 here.
    struct Stored {
        enum Flag : std::uint32_t {
            isMeasured = 0x01,
            hasFileSize = 0x02,
            hasAllocatedSizes = 0x04, // both, and equal
            hasVolume = 0x08,         // m_volume
            knowsIsDirectory = 0x10,
            isDirectory = 0x20,
            isPackage = 0x40,
            isSymbolicLink = 0x80,
            isVolume = 0x100,
            isUnusual = 0x200, // the values are in m_unusual, at the place that fileSize tells
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
    std::optional<std::uint64_t> m_volume; // of the first entry that has one
};

/// Called with what has been listed so far, between the parts in which the system lists a large folder. May wait; false
/// ends the listing, which then has failed.
using ListingPace = std::function<bool(const FolderContents& soFar)>;

/// A folder on the way of a walk. Folders are entered from the one above them, which must outlive them, so that
/// nothing that happens to the names higher up (one becomes a link, say) leads the walk elsewhere. Several threads may
/// list different folders of a walk at once, its top first.
class Folder {
public:
    Folder() = default;
    virtual ~Folder() = default;
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    /// Puts everything in the folder but `.` and `..` into `contents`, which is empty. False when the folder cannot be
    /// listed to its end, or soon after `stop` was triggered; what `contents` holds then has no meaning. Called once.
    [[nodiscard]] virtual bool list(FolderContents& contents, const std::stop_token& stop, const ListingPace& pace) = 0;
    [[nodiscard]] bool list(FolderContents& contents, const std::stop_token& stop) { return list(contents, stop, {}); }

    /// Whether the listing failed because too much was open at once, so that it may succeed later.
    [[nodiscard]] virtual bool lackedDescriptors() const noexcept { return false; }

    /// The folder of that name in this one. Never fails: what is not there, is no folder, or has something mounted on
    /// it cannot be listed.
    [[nodiscard]] virtual std::unique_ptr<Folder> folder(std::string_view name) = 0;
};

/// What a walk needs of the operating system. Stateless; any thread.
class FileSystem {
public:
    FileSystem() = default;
    virtual ~FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;

    /// The running system's.
    [[nodiscard]] static std::shared_ptr<const FileSystem> native();

    /// The values of one item; nothing when they cannot be read.
    [[nodiscard]] virtual std::optional<ResourceValues> resourceValues(const FileUrl& url) const = 0;

    /// The identifier of the volume that holds the item; nothing when it cannot be read.
    [[nodiscard]] virtual std::optional<std::uint64_t> volumeIdentifier(const FileUrl& url) const = 0;

    /// How many threads are worth having that list folders ahead of a walk.
    [[nodiscard]] virtual std::size_t usefulReaders() const noexcept { return 0; }

    /// The folder at which a walk begins.
    [[nodiscard]] virtual std::unique_ptr<Folder> folder(const FileUrl& url) const = 0;

    /// The same location with the symbolic links in its path followed; the location as it is when that fails.
    [[nodiscard]] virtual FileUrl resolvingSymlinks(const FileUrl& url) const = 0;
};

} // namespace morlaine
