#pragma once

#include "Platform/FileSystem.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace morlaine::test {

/// A file system in memory, for situations that cannot be created on disk. Set it up before a walk, which may run on
/// another thread.
class FakeFileSystem final : public FileSystem {
public:
    static constexpr std::uint64_t homeVolume = 1;

    struct Item {
        std::optional<ResourceValues> values;
        std::vector<std::string> entries; // in the order of listing
        bool isListable = true;
    };

    /// Items are added with their parent folders. Adding a path again changes the item.
    Item& addFolder(const std::string& path);
    Item& addFile(const std::string& path, std::int64_t fileSize, std::optional<std::int64_t> allocated = {});

    /// Called with the path of each folder before it is opened, and before it is listed.
    std::function<void(const std::string& path)> onOpening;
    std::function<void(const std::string& path)> onListing;

    /// The targets of links by path; other paths resolve to themselves.
    std::map<std::string, std::string> resolved;

    /// All folders listed so far, in order. Any thread.
    [[nodiscard]] std::vector<std::string> listings() const;

    [[nodiscard]] std::optional<ResourceValues> resourceValues(const FileUrl& url) const override;
    [[nodiscard]] std::optional<std::uint64_t> volumeIdentifier(const FileUrl& url) const override;
    [[nodiscard]] std::unique_ptr<Folder> folder(const FileUrl& url) const override;
    [[nodiscard]] FileUrl resolvingSymlinks(const FileUrl& url) const override;

private:
    class FakeFolder;

    Item& add(const std::string& path);
    [[nodiscard]] const Item* find(const std::string& path) const;

    std::map<std::string, Item> m_items;
    mutable std::mutex m_mutex;
    mutable std::vector<std::string> m_listings;
};

} // namespace morlaine::test
