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

/// The memory of wider folders is not kept for others.
constexpr std::size_t mostEntriesToKeep = 128;

/// The bytes that an item takes: its length, or less where less is allocated.
std::int64_t measuredSize(const ResourceValues& values)
{
    const std::int64_t fileSize = values.fileSize.value_or(0);
    const auto allocated = values.totalAllocatedSize ? values.totalAllocatedSize : values.allocatedSize;
    return allocated ? std::min(fileSize, *allocated) : fileSize;
}

} // namespace

/// A folder whose contents are being visited.
struct DiskWalk::OpenDirectory {
    struct Child {
        std::int64_t size;
        std::size_t position; // in the listing
        FileNode node;
    };

    FileUrl url;
    FileUrl sharedUrl; // as what the folder holds shares it
    std::unique_ptr<Folder> folder;
    FolderContents contents;
    std::size_t pathLength; // of the folder's own path in m_path, without a slash at its end
    std::vector<Child> children;
    std::size_t nextEntry = 0;
    std::int64_t size = 0;

    void add(FileNode&& child)
    {
        const std::int64_t childSize = child.size();
        size = checkedAdd(size, childSize);
        children.push_back({childSize, children.size(), std::move(child)});
    }

    /// Largest first; equal sizes stay in the order of the listing.
    [[nodiscard]] std::vector<FileNode> takeSortedChildren()
    {
        std::ranges::sort(children, [](const Child& a, const Child& b) {
            return a.size != b.size ? a.size > b.size : a.position < b.position;
        });
        std::vector<FileNode> nodes;
        nodes.reserve(children.size());
        for (Child& child : children) {
            nodes.push_back(std::move(child.node));
        }
        return nodes;
    }
};

/// What the walk has come to: the top, or an entry of an open folder. Valid until that folder is left.
struct DiskWalk::Item {
    const FileUrl* top;             // null for an entry
    const OpenDirectory* directory; // null for the top
    std::string_view name;
    const ResourceValues* values; // null when they cannot be read

    [[nodiscard]] FileUrl url() const { return top != nullptr ? *top : directory->sharedUrl.appending(name); }

    [[nodiscard]] FileNode leaf(std::int64_t size, bool isDirectory, FileCategory category) const
    {
        return top != nullptr ? FileNode(*top, name, size, isDirectory, category, std::nullopt)
                              : FileNode::inFolder(directory->sharedUrl, name, size, isDirectory, category);
    }

    [[nodiscard]] FileNode withEmptyList(bool isDirectory) const
    {
        return {url(), name, 0, isDirectory, FileCategory::other, std::vector<FileNode>()};
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
    if (std::optional<FileNode> top = visit({&url, nullptr, url.lastPathComponent(), values ? &*values : nullptr})) {
        return *std::move(top);
    }
    for (;;) {
        const OpenDirectory& directory = m_openDirectories.top();
        const bool isFinished = directory.nextEntry == directory.contents.size();
        std::optional<FileNode> node = isFinished ? leaveDirectory() : visitNextEntry();
        if (!node) {
            continue;
        }
        if (m_openDirectories.isEmpty()) {
            return *std::move(node);
        }
        m_openDirectories.top().add(*std::move(node));
    }
}

std::optional<FileNode> DiskWalk::visitNextEntry()
{
    throwIfCancelled();
    OpenDirectory& directory = m_openDirectories.top();
    const FolderContents::Entry entry = directory.contents[directory.nextEntry++];
    m_path.resize(directory.pathLength);
    m_path += '/';
    m_path += entry.name;
    return visit({nullptr, &directory, entry.name, entry.values});
}

/// The node of an item, or nothing for a folder that has been entered and yields its node when it is left.
std::optional<FileNode> DiskWalk::visit(const Item& item)
{
    if (item.values == nullptr) {
        return item.leaf(0, false, FileCategory::other);
    }
    if (isExcluded(m_path, *item.values)) {
        return item.withEmptyList(item.values->isDirectory.value_or(false));
    }
    if (item.values->isSymbolicLink) {
        return item.leaf(0, false, FileCategory::other);
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
    reportAtIntervals(item);
    std::unique_ptr<Folder> folder = openFolder(item);
    FolderContents contents = takeSpareContents();
    if (!list(*folder, contents)) {
        return item.withEmptyList(true);
    }
    const std::size_t pathLength = m_path == "/" ? 0 : m_path.size();
    std::vector<OpenDirectory::Child> children;
    children.reserve(contents.size());
    const FileUrl url = item.url();
    m_openDirectories.push(
        {url, url.asFolder(), std::move(folder), std::move(contents), pathLength, std::move(children)});
    return std::nullopt;
}

FileNode DiskWalk::leaveDirectory()
{
    OpenDirectory directory = m_openDirectories.pop();
    giveBack(std::move(directory.contents));
    const std::string_view lastComponent = directory.url.lastPathComponent();
    const std::string name = lastComponent.empty() ? directory.url.path() : std::string(lastComponent);
    return {directory.url, name, directory.size, true, FileCategory::other, directory.takeSortedChildren()};
}

FileNode DiskWalk::measureFile(const Item& item)
{
    const std::int64_t size = measuredSize(*item.values);
    const FileCategory category = FileCategory::from(FileUrl::pathExtension(item.name));
    m_stats.countFile(size);
    reportAtIntervals(item);
    return item.leaf(size, false, category);
}

FileNode DiskWalk::measurePackage(const Item& item)
{
    const std::int64_t size = calculateSizeOfPackage(openFolder(item));
    m_stats.countFile(size);
    reportAtIntervals(item);
    return item.leaf(size, false, FileCategory::application);
}

std::unique_ptr<Folder> DiskWalk::openFolder(const Item& item) const
{
    return item.top != nullptr ? m_fileSystem->folder(*item.top) : item.directory->folder->folder(item.name);
}

/// A listing that was stopped is no reason to take the folder for an unreadable one.
bool DiskWalk::list(Folder& folder, FolderContents& contents) const
{
    const bool isListed = folder.list(contents, m_stopToken);
    if (!isListed) {
        throwIfCancelled();
    }
    return isListed;
}

FolderContents DiskWalk::takeSpareContents()
{
    if (m_spareContents.empty()) {
        return {};
    }
    FolderContents contents = std::move(m_spareContents.back());
    m_spareContents.pop_back();
    return contents;
}

void DiskWalk::giveBack(FolderContents&& contents)
{
    if (contents.size() <= mostEntriesToKeep) {
        contents.clear();
        m_spareContents.push_back(std::move(contents));
    }
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
    const auto enter = [this, &openFolders](std::unique_ptr<Folder> folder) {
        if (FolderContents contents; list(*folder, contents)) {
            openFolders.push({std::move(folder), std::move(contents)});
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

void DiskWalk::reportAtIntervals(const Item& item)
{
    const auto now = ScanStats::Clock::now();
    if (now - m_stats.lastUpdateTime > reportInterval) {
        m_stats.lastUpdateTime = now;
        m_updateCallback(item.url().path(), m_stats.filesCount, m_stats.dirsCount, m_stats.totalSize);
    }
}

} // namespace morlaine
