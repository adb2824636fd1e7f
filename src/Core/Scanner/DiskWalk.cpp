#include "Core/Scanner/DiskWalk.h"

#include "Utilities/CheckedMath.h"
#include "Utilities/FileCategory.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace morlaine {

namespace {

constexpr std::chrono::milliseconds reportInterval{100};

/// The bytes that an item takes: its length, or less where less is allocated.
std::int64_t measuredSize(const ResourceValues& values)
{
    const std::int64_t fileSize = values.fileSize.value_or(0);
    const auto allocated = values.totalAllocatedSize ? values.totalAllocatedSize : values.allocatedSize;
    return allocated ? std::min(fileSize, *allocated) : fileSize;
}

FileNode emptyNode(const FileUrl& url, bool isDirectory, bool hasList)
{
    return {url,         url.lastPathComponent(), 0,
            isDirectory, FileCategory::other,     hasList ? std::optional(std::vector<FileNode>()) : std::nullopt};
}

} // namespace

/// What the walk has come to.
struct DiskWalk::Item {
    FileUrl url;
    const ResourceValues* values; // null when they cannot be read
    Folder* folder;               // that the item stands in; null for the top of the walk
};

/// A folder whose contents are being visited.
struct DiskWalk::OpenDirectory {
    FileUrl url;
    std::unique_ptr<Folder> folder;
    FolderContents contents;
    std::size_t pathLength; // of the folder's own path in m_path, without a slash at its end
    std::vector<FileNode> children;
    std::size_t nextEntry = 0;
    std::int64_t size = 0;

    void add(FileNode&& child)
    {
        size = checkedAdd(size, child.size());
        children.push_back(std::move(child));
    }
};

/// A folder inside a package whose contents are being summed.
struct DiskWalk::OpenPackage {
    std::unique_ptr<Folder> folder;
    FolderContents contents;
    std::size_t nextEntry = 0;
};

DiskWalk::DiskWalk(std::shared_ptr<const FileSystem> fileSystem, std::stop_token stopToken,
                   UpdateCallback updateCallback)
    : m_fileSystem(std::move(fileSystem))
    , m_stopToken(std::move(stopToken))
    , m_updateCallback(std::move(updateCallback))
{
}

DiskWalk::~DiskWalk() = default;

FileNode DiskWalk::scan(const FileUrl& url)
{
    const FileUrl standardUrl = url.standardized();
    const FileUrl rootUrl = m_fileSystem->resolvingSymlinks(standardUrl);
    m_rootPath = rootUrl.path();
    m_rootVolumeID = m_fileSystem->volumeIdentifier(rootUrl);
    m_path = standardUrl.path();
    return scanNode(url);
}

FileNode DiskWalk::scanNode(const FileUrl& url)
{
    throwIfCancelled();
    const std::optional<ResourceValues> values = m_fileSystem->resourceValues(url);
    std::optional<FileNode> finished = visit({url, values ? &*values : nullptr, nullptr});
    while (!m_openDirectories.isEmpty()) {
        const OpenDirectory& directory = m_openDirectories.top();
        finished = directory.nextEntry < directory.contents.size() ? visitNextEntry() : leaveDirectory();
        if (finished && !m_openDirectories.isEmpty()) {
            m_openDirectories.top().add(*std::move(finished));
        }
    }
    return *std::move(finished);
}

std::optional<FileNode> DiskWalk::visitNextEntry()
{
    throwIfCancelled();
    OpenDirectory& directory = m_openDirectories.top();
    const FolderContents::Entry entry = directory.contents[directory.nextEntry++];
    m_path.resize(directory.pathLength);
    m_path += '/';
    m_path += entry.name;
    return visit({directory.url.appending(entry.name), entry.values, directory.folder.get()});
}

/// The node of an item, or nothing for a folder that has been entered and yields its node when it is left.
std::optional<FileNode> DiskWalk::visit(const Item& item)
{
    if (item.values == nullptr) {
        return emptyNode(item.url, false, false);
    }
    if (isExcluded(m_path, *item.values)) {
        return emptyNode(item.url, item.values->isDirectory.value_or(false), true);
    }
    if (item.values->isSymbolicLink) {
        return emptyNode(item.url, false, false);
    }
    if (item.values->isPackage) {
        return measurePackage(item);
    }
    if (item.values->isDirectory.value_or(false)) {
        return enterDirectory(item);
    }
    return measureFile(item);
}

std::optional<FileNode> DiskWalk::enterDirectory(const Item& item)
{
    m_stats.countDirectory();
    reportAtIntervals(item.url);
    std::unique_ptr<Folder> folder = openFolder(item);
    std::optional<FolderContents> contents = folder->contents();
    if (!contents) {
        return emptyNode(item.url, true, true);
    }
    const std::size_t pathLength = m_path == "/" ? 0 : m_path.size();
    std::vector<FileNode> children;
    children.reserve(contents->size());
    m_openDirectories.push({item.url, std::move(folder), *std::move(contents), pathLength, std::move(children)});
    return std::nullopt;
}

FileNode DiskWalk::leaveDirectory()
{
    OpenDirectory directory = m_openDirectories.pop();
    std::ranges::stable_sort(directory.children, std::ranges::greater(), &FileNode::size);
    const std::string_view lastComponent = directory.url.lastPathComponent();
    const std::string name = lastComponent.empty() ? directory.url.path() : std::string(lastComponent);
    return {directory.url, name, directory.size, true, FileCategory::other, std::move(directory.children)};
}

FileNode DiskWalk::measureFile(const Item& item)
{
    const std::int64_t size = measuredSize(*item.values);
    const FileCategory category = FileCategory::from(item.url.pathExtension());
    m_stats.countFile(size);
    reportAtIntervals(item.url);
    return {item.url, item.url.lastPathComponent(), size, false, category, std::nullopt};
}

FileNode DiskWalk::measurePackage(const Item& item)
{
    const std::int64_t size = calculateSizeOfPackage(openFolder(item));
    m_stats.countFile(size);
    reportAtIntervals(item.url);
    return {item.url, item.url.lastPathComponent(), size, false, FileCategory::application, std::nullopt};
}

std::unique_ptr<Folder> DiskWalk::openFolder(const Item& item) const
{
    return item.folder == nullptr ? m_fileSystem->folder(item.url) : item.folder->folder(item.url.lastPathComponent());
}

bool DiskWalk::isExcluded(std::string_view path, const ResourceValues& resourceValues) const
{
    if (path == m_rootPath) {
        return false;
    }
    if (path == "/Volumes" || path == "/System/Volumes" || path == "/dev") {
        return true;
    }
    if (path.starts_with("/.vol") || path.starts_with("/.nofollow") || path.starts_with("/.resolve")) {
        return true;
    }
    if (resourceValues.isVolume) {
        return true;
    }
    return resourceValues.volumeIdentifier && m_rootVolumeID && *m_rootVolumeID != *resourceValues.volumeIdentifier;
}

/// The sum over everything in the package that is neither hidden nor in something hidden. A volume that is mounted
/// inside it is not part of it.
std::int64_t DiskWalk::calculateSizeOfPackage(std::unique_ptr<Folder> package) const
{
    throwIfCancelled();
    std::int64_t total = 0;
    DescentStack<OpenPackage> openFolders;
    const auto enter = [&openFolders](std::unique_ptr<Folder> folder) {
        if (std::optional<FolderContents> contents = folder->contents()) {
            openFolders.push({std::move(folder), *std::move(contents)});
        }
    };
    enter(std::move(package));
    while (!openFolders.isEmpty()) {
        OpenPackage& open = openFolders.top();
        if (open.nextEntry == open.contents.size()) {
            openFolders.pop();
            continue;
        }
        throwIfCancelled();
        const auto [name, values] = open.contents[open.nextEntry++];
        if (name.starts_with('.') || values == nullptr) {
            continue;
        }
        if (!values->isDirectory.value_or(false)) {
            total = checkedAdd(total, measuredSize(*values));
        } else if (!values->isVolume) {
            enter(open.folder->folder(name));
        }
    }
    return total;
}

void DiskWalk::throwIfCancelled() const
{
    if (m_stopToken.stop_requested()) {
        throw ScanCancelled();
    }
}

void DiskWalk::reportAtIntervals(const FileUrl& url)
{
    const auto now = ScanStats::Clock::now();
    if (now - m_stats.lastUpdateTime > reportInterval) {
        m_stats.lastUpdateTime = now;
        m_updateCallback(url.path(), m_stats.filesCount, m_stats.dirsCount, m_stats.totalSize);
    }
}

} // namespace morlaine
