#include "Support/FakeFileSystem.h"

#include <algorithm>

namespace morlaine::test {

namespace {

std::string joined(const std::string& folder, std::string_view name)
{
    return (folder == "/" ? "" : folder) + '/' + std::string(name);
}

} // namespace

class FakeFileSystem::FakeFolder final : public Folder {
public:
    FakeFolder(const FakeFileSystem& fileSystem, std::string path) : m_fileSystem(fileSystem), m_path(std::move(path))
    {
        if (fileSystem.onOpening) {
            fileSystem.onOpening(m_path);
        }
    }

    [[nodiscard]] bool list(FolderContents& contents, const std::stop_token& stop, const ListingPace& pace) override
    {
        {
            const std::lock_guard lock(m_fileSystem.m_mutex);
            m_fileSystem.m_listings.push_back(m_path);
        }
        if (m_fileSystem.onListing) {
            m_fileSystem.onListing(m_path);
        }
        const Item* item = m_fileSystem.find(m_path);
        if (item == nullptr || !item->isListable || stop.stop_requested()) {
            return false;
        }
        for (const std::string& name : item->entries) {
            const Item* entry = m_fileSystem.find(joined(m_path, name));
            contents.append(name, entry->values);
        }
        return !pace || pace(contents);
    }

    [[nodiscard]] std::unique_ptr<Folder> folder(std::string_view name) override
    {
        return std::make_unique<FakeFolder>(m_fileSystem, joined(m_path, name));
    }

private:
    const FakeFileSystem& m_fileSystem;
    const std::string m_path;
};

FakeFileSystem::Item& FakeFileSystem::add(const std::string& path)
{
    if (const auto found = m_items.find(path); found != m_items.end()) {
        return found->second;
    }
    if (path != "/") {
        const std::size_t slash = path.rfind('/');
        const std::string folder = path.substr(0, std::max<std::size_t>(slash, 1));
        if (!m_items.contains(folder)) {
            addFolder(folder);
        }
        m_items[folder].entries.push_back(path.substr(slash + 1));
    }
    return m_items[path];
}

FakeFileSystem::Item& FakeFileSystem::addFolder(const std::string& path)
{
    Item& item = add(path);
    item.values.emplace();
    item.values->isDirectory = true;
    item.values->volumeIdentifier = homeVolume;
    return item;
}

FakeFileSystem::Item& FakeFileSystem::addFile(const std::string& path, std::int64_t fileSize,
                                              std::optional<std::int64_t> allocated)
{
    Item& item = add(path);
    item.values.emplace();
    item.values->isDirectory = false;
    item.values->fileSize = fileSize;
    item.values->totalAllocatedSize = allocated;
    item.values->volumeIdentifier = homeVolume;
    return item;
}

const FakeFileSystem::Item* FakeFileSystem::find(const std::string& path) const
{
    const auto found = m_items.find(path);
    return found == m_items.end() ? nullptr : &found->second;
}

std::vector<std::string> FakeFileSystem::listings() const
{
    const std::lock_guard lock(m_mutex);
    return m_listings;
}

std::optional<ResourceValues> FakeFileSystem::resourceValues(const FileUrl& url) const
{
    const Item* item = find(url.standardized().path());
    return item == nullptr ? std::nullopt : item->values;
}

std::optional<std::uint64_t> FakeFileSystem::volumeIdentifier(const FileUrl& url) const
{
    const auto values = resourceValues(url);
    return values ? values->volumeIdentifier : std::nullopt;
}

std::unique_ptr<Folder> FakeFileSystem::folder(const FileUrl& url) const
{
    return std::make_unique<FakeFolder>(*this, url.standardized().path());
}

FileUrl FakeFileSystem::resolvingSymlinks(const FileUrl& url) const
{
    const auto found = resolved.find(url.standardized().path());
    return found == resolved.end() ? url : FileUrl::fromPath(found->second);
}

} // namespace morlaine::test
