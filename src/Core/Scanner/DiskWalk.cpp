#include "Core/Scanner/DiskWalk.h"

#include "Platform/Memory.h"
#include "Platform/ReadAhead.h"
#include "Utilities/CheckedMath.h"
#include "Utilities/FileCategory.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace morlaine {

namespace {

constexpr std::chrono::milliseconds reportInterval{100};

/// Measuring a listed file takes less time than reading the clock.
constexpr std::size_t filesBetweenLooksAtTheClock = 64;

/// The buffers of larger folders are freed instead of reused.
constexpr std::size_t mostEntriesToKeep = 128;

/// The size of an item in bytes: the smaller of its length and its allocated size.
std::int64_t measuredSize(const ResourceValues& values)
{
    const std::int64_t fileSize = values.fileSize.value_or(0);
    const auto allocated = values.totalAllocatedSize ? values.totalAllocatedSize : values.allocatedSize;
    return allocated ? std::min(fileSize, *allocated) : fileSize;
}

} // namespace

/// A folder whose contents are being visited.
struct DiskWalk::OpenDirectory {
    TreeBuilder::Position node;
    std::unique_ptr<Folder> folder;
    FolderContents contents;
    std::size_t pathLength; // length of the folder's path in m_path, without a slash at the end
    std::size_t nextEntry = 0;
    std::int64_t size = 0;
};

/// The current item: the top, or an entry of an open folder. Valid until that folder is left.
struct DiskWalk::Item {
    const FileUrl* top;       // null for an entry
    OpenDirectory* directory; // null for the top
    std::string_view name;
    const ResourceValues* values; // null if they cannot be read
};

/// A folder inside a package that is being summed.
struct DiskWalk::OpenPackage {
    std::unique_ptr<Folder> folder;
    FolderContents contents;
    std::size_t nextEntry = 0;
};

DiskWalk::DiskWalk(std::shared_ptr<const FileSystem> fileSystem, std::stop_token stopToken,
                   UpdateCallback updateCallback, std::size_t readers)
    : m_fileSystem(std::move(fileSystem))
    , m_stopToken(std::move(stopToken))
    , m_updateCallback(std::move(updateCallback))
    , m_readers(readers)
{
}

DiskWalk::~DiskWalk() = default;

FileNode DiskWalk::scan(const FileUrl& url)
{
    const FileUrl standardUrl = url.standardized();
    const FileUrl rootUrl = m_fileSystem->resolvingSymlinks(standardUrl);
    m_rules = {rootUrl.path(), m_fileSystem->volumeIdentifier(rootUrl)};
    m_path = standardUrl.path();
    scanNode(url);
    return m_tree.finish();
}

void DiskWalk::scanNode(const FileUrl& url)
{
    throwIfCancelled();
    const std::optional<ResourceValues> values = m_fileSystem->resourceValues(url);
    visit({&url, nullptr, url.lastPathComponent(), values ? &*values : nullptr});
    while (!m_openDirectories.isEmpty()) {
        const OpenDirectory& directory = m_openDirectories.top();
        if (directory.nextEntry == directory.contents.size()) {
            leaveDirectory();
        } else {
            visitNextEntry();
        }
    }
}

void DiskWalk::visitNextEntry()
{
    throwIfCancelled();
    OpenDirectory& directory = m_openDirectories.top();
    const FolderContents::Entry entry = directory.contents[directory.nextEntry++];
    m_path.resize(directory.pathLength);
    m_path += '/';
    m_path += entry.name;
    visit({nullptr, &directory, entry.name, entry.values ? &*entry.values : nullptr});
}

void DiskWalk::visit(const Item& item)
{
    // NOLINTNEXTLINE(bugprone-branch-clone): the order decides, a link may be excluded
    if (item.values == nullptr) {
        addLeaf(item, 0, false, FileCategory::other);
    } else if (m_rules.isExcluded(m_path, *item.values)) {
        addWithEmptyList(item, item.values->isDirectory.value_or(false));
    } else if (item.values->isSymbolicLink) {
        addLeaf(item, 0, false, FileCategory::other);
    } else if (item.values->isPackage) {
        measurePackage(item);
    } else if (item.values->isDirectory.value_or(false)) {
        enterDirectory(item);
    } else {
        measureFile(item);
    }
}

TreeBuilder::Position DiskWalk::addLeaf(const Item& item, std::int64_t size, bool isDirectory, FileCategory category)
{
    const TreeBuilder::Fields fields{Uuid::random(), size, isDirectory, category};
    if (item.top != nullptr) {
        return m_tree.add(fields, item.top->bytes(), item.name);
    }
    item.directory->size = checkedAdd(item.directory->size, size);
    return m_tree.addComponent(fields, item.name);
}

void DiskWalk::addWithEmptyList(const Item& item, bool isDirectory)
{
    addLeaf(item, 0, isDirectory, FileCategory::other);
    m_tree.openList();
    m_tree.closeList();
}

void DiskWalk::enterDirectory(const Item& item)
{
    m_stats.countDirectory();
    reportAtIntervals(item);
    std::unique_ptr<Folder> folder = openFolder(item);
    FolderContents contents = takeSpareContents();
    if (!list(*folder, contents)) {
        addWithEmptyList(item, true);
        return;
    }
    const std::size_t pathLength = m_path == "/" ? 0 : m_path.size();
    const std::string pathOfRoot = item.name.empty() ? item.top->path() : std::string();
    const TreeBuilder::Position node =
        addLeaf({item.top, item.directory, item.name.empty() ? pathOfRoot : item.name, item.values}, 0, true,
                FileCategory::other);
    m_tree.openList();
    m_openDirectories.push({node, std::move(folder), std::move(contents), pathLength});
}

void DiskWalk::leaveDirectory()
{
    OpenDirectory directory = m_openDirectories.pop();
    giveBack(std::move(directory.contents));
    m_tree.setSize(directory.node, directory.size);
    m_tree.closeList();
    if (!m_openDirectories.isEmpty()) {
        OpenDirectory& above = m_openDirectories.top();
        above.size = checkedAdd(above.size, directory.size);
    }
}

void DiskWalk::measureFile(const Item& item)
{
    const std::int64_t size = measuredSize(*item.values);
    const FileCategory category = FileCategory::from(FileUrl::pathExtension(item.name));
    m_stats.countFile(size);
    if (item.directory == nullptr || item.directory->nextEntry % filesBetweenLooksAtTheClock == 1) {
        reportAtIntervals(item);
    }
    addLeaf(item, size, false, category);
}

void DiskWalk::measurePackage(const Item& item)
{
    const std::int64_t size = calculateSizeOfPackage(openFolder(item));
    m_stats.countFile(size);
    reportAtIntervals(item);
    addLeaf(item, size, false, FileCategory::application);
}

std::unique_ptr<Folder> DiskWalk::openFolder(const Item& item) const
{
    if (item.top == nullptr) {
        return item.directory->folder->folder(item.name);
    }
    std::unique_ptr<Folder> top = m_fileSystem->folder(*item.top);
    if (m_readers == 0 || item.values->isPackage) {
        return top;
    }
    ExclusionRules rules = m_rules;
    rules.rootPath.clear(); // a cut-off path could be equal to it
    const auto isEntered = [rules, owner = m_fileSystem](std::string_view path, const ResourceValues& values) {
        return !rules.isExcluded(path, values) && !values.isSymbolicLink && !values.isPackage;
    };
    return readingAhead(std::move(top), m_path, {isEntered, ExclusionRules::decisiveLength}, m_readers);
}

/// False if the folder cannot be read. Throws ScanCancelled if the listing was stopped.
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

/// The sum of all items in the package that are neither hidden nor inside a hidden folder. Skips mounted volumes.
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
        if (name.starts_with('.') || !values) {
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

std::string DiskWalk::pathOf(const Item& item)
{
    return item.top != nullptr ? item.top->path()
                               : m_tree.startOfLocationsIn(item.directory->node) + std::string(item.name);
}

void DiskWalk::reportAtIntervals(const Item& item)
{
    const auto now = ScanStats::Clock::now();
    if (now - m_stats.lastUpdateTime > reportInterval) {
        m_stats.lastUpdateTime = now;
        requireSpareMemory();
        m_updateCallback(pathOf(item), m_stats.filesCount, m_stats.dirsCount, m_stats.totalSize);
    }
}

} // namespace morlaine
