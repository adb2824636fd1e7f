#include "UI/Views/State/MainViewModel.h"

#include "Utilities/Utf8.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <new>
#include <utility>

namespace morlaine {

namespace {

constexpr std::chrono::milliseconds watchInterval{500};

template <typename Value>
Value takeLast(std::vector<Value>& stack)
{
    Value last = std::move(stack.back());
    stack.pop_back();
    return last;
}

/// The root of the file system has no last component; its name is its path.
std::string nameOfMountPoint(const FileUrl& url)
{
    const std::string_view lastComponent = url.lastPathComponent();
    return validUtf8(lastComponent.empty() ? url.path() : lastComponent);
}

std::optional<VolumeInfo> volumeInfo(const MountedVolume& volume)
{
    if (volume.totalCapacity.value_or(0) <= 0) {
        return std::nullopt;
    }
    return VolumeInfo{Uuid::random(), volume.url, volume.name.empty() ? nameOfMountPoint(volume.url) : volume.name,
                      *volume.totalCapacity, volume.availableCapacity.value_or(0)};
}

/// Shown if there are no volumes, so that the list is never empty.
VolumeInfo placeholderVolume()
{
    constexpr std::int64_t gibibyte = std::int64_t{1} << 30;
    return {Uuid::random(), FileUrl::fromPath("/"), "Macintosh HD", 512 * gibibyte, 256 * gibibyte};
}

} // namespace

MainViewModel::MainViewModel(Environment environment, QObject* parent)
    : ObservableObject(parent)
    , m_environment(std::move(environment))
    , m_scanner(std::make_unique<DiskScanner>(m_environment.fileSystem))
{
    loadVolumes();
    loadFavorites();
    loadHistory();
    connect(m_scanner.get(), &DiskScanner::objectWillChange, this, &MainViewModel::objectWillChange);
}

void MainViewModel::setSelectedNode(std::optional<FileNode> node)
{
    publish(m_selectedNode, std::move(node));
}

void MainViewModel::setZoomStack(std::vector<FileNode> zoomStack)
{
    publish(m_zoomStack, std::move(zoomStack));
}

void MainViewModel::setSearchText(const QString& text)
{
    publish(m_searchText, text);
    performSearch();
}

void MainViewModel::setSelectedCategory(std::optional<FileCategory> category)
{
    publish(m_selectedCategory, category);
    performSearch();
}

void MainViewModel::setMinSizeFilter(std::optional<std::int64_t> bytes)
{
    publish(m_minSizeFilter, bytes);
    performSearch();
}

std::optional<FileNode> MainViewModel::activeRootNode() const
{
    return m_zoomStack.empty() ? m_currentRootNode : m_zoomStack.back();
}

void MainViewModel::scan(const FileUrl& url)
{
    resetSession();
    m_searchIndex.reset();
    m_scanner->startScan(url);
    startWatcher();
}

void MainViewModel::cancelScan()
{
    m_scanner->cancelScan();
}

/// Keeps the type and size filters, and the index.
void MainViewModel::resetSession()
{
    publish(m_currentRootNode, std::nullopt);
    publish(m_selectedNode, std::nullopt);
    publish(m_zoomStack, std::vector<FileNode>());
    m_backStack.clear();
    m_forwardStack.clear();
    setSearchText(QStringLiteral(""));
    publish(m_searchResults, SearchResults());
    publish(m_highlightIDs, NodeIDSet());
}

/// Polls the scanner until it has stopped, even if another scan is running by then.
void MainViewModel::startWatcher()
{
    QTimer::singleShot(watchInterval, this, [this] {
        if (m_scanner->isScanning()) {
            startWatcher();
        } else {
            showFinishedScan();
        }
    });
}

void MainViewModel::showFinishedScan()
{
    const std::optional<FileNode> root = m_scanner->scanResult();
    if (!root) {
        return;
    }
    attempt([&] { showTree(*root); });
    attempt(
        [&] { m_environment.store.saveScan(*root, m_scanner->scannedFilesCount(), m_scanner->scannedDirsCount()); });
    loadHistory();
}

template <typename Work>
bool MainViewModel::attempt(Work work)
{
    try {
        work();
        return true;
    } catch (const std::bad_alloc&) {
        reportLackOfMemory();
        return false;
    }
}

void MainViewModel::reportLackOfMemory()
{
    m_scanner->setErrorMessage(QStringLiteral("There is not enough memory for this."));
}

void MainViewModel::showTree(const FileNode& root)
{
    publish(m_currentRootNode, root);
    publish(m_selectedNode, root);
    m_searchIndex.emplace(root);
}

void MainViewModel::zoomIn(FileNode node)
{
    if (!node.isDirectory()) {
        return;
    }
    if (std::optional<FileNode> active = activeRootNode()) {
        m_backStack.push_back(*std::move(active));
    }
    m_forwardStack.clear();
    Q_EMIT objectWillChange();
    m_zoomStack.push_back(node);
    publish(m_selectedNode, std::move(node));
}

void MainViewModel::zoomOut()
{
    if (m_zoomStack.empty()) {
        return;
    }
    Q_EMIT objectWillChange();
    m_backStack.push_back(takeLast(m_zoomStack));
    publish(m_selectedNode, activeRootNode());
}

void MainViewModel::zoomToRoot()
{
    publish(m_zoomStack, std::vector<FileNode>());
    publish(m_selectedNode, m_currentRootNode);
}

void MainViewModel::navigateBack()
{
    if (m_backStack.empty()) {
        return;
    }
    FileNode previous = takeLast(m_backStack);
    if (std::optional<FileNode> active = activeRootNode()) {
        m_forwardStack.push_back(*std::move(active));
    }
    Q_EMIT objectWillChange();
    const auto found = std::ranges::find(m_zoomStack, previous.id(), &FileNode::id);
    m_zoomStack.erase(found == m_zoomStack.end() ? m_zoomStack.begin() : found + 1, m_zoomStack.end());
    publish(m_selectedNode, std::move(previous));
}

void MainViewModel::navigateForward()
{
    if (m_forwardStack.empty()) {
        return;
    }
    FileNode next = takeLast(m_forwardStack);
    if (std::optional<FileNode> active = activeRootNode()) {
        m_backStack.push_back(*std::move(active));
    }
    Q_EMIT objectWillChange();
    if (m_currentRootNode && m_currentRootNode->id() == next.id()) {
        m_zoomStack.clear();
    } else {
        m_zoomStack.push_back(next);
    }
    publish(m_selectedNode, std::move(next));
}

void MainViewModel::revealInFinder(const FileNode& node)
{
    m_environment.workspace->selectFile(node.url().path(), "");
}

void MainViewModel::openFile(const FileNode& node)
{
    m_environment.workspace->open(node.url());
}

void MainViewModel::copyPathToClipboard(const FileNode& node)
{
    m_environment.workspace->copyText(node.url().path());
}

void MainViewModel::performSearch()
{
    if (!m_searchIndex || (m_searchText.isEmpty() && !m_selectedCategory && !m_minSizeFilter)) {
        publish(m_searchResults, SearchResults());
        publish(m_highlightIDs, NodeIDSet());
        return;
    }
    SearchResults results;
    attempt([&] { results = m_searchIndex->search(m_searchText, m_selectedCategory, m_minSizeFilter, std::nullopt); });
    publish(m_searchResults, results);
    publish(m_highlightIDs, NodeIDSet(m_searchResults));
}

void MainViewModel::loadVolumes()
{
    std::vector<VolumeInfo> volumes;
    for (const MountedVolume& mounted : m_environment.volumes->mountedVolumes()) {
        if (std::optional<VolumeInfo> volume = volumeInfo(mounted)) {
            volumes.push_back(*std::move(volume));
        }
    }
    if (volumes.empty()) {
        volumes.push_back(placeholderVolume());
    }
    publish(m_volumes, std::move(volumes));
}

void MainViewModel::loadFavorites()
{
    const UserFolders& folders = m_environment.userFolders;
    std::vector<FavoriteFolder> favorites;
    const auto add = [&favorites](const char* name, const std::optional<FileUrl>& url, const char* iconName) {
        if (url) {
            favorites.push_back({Uuid::random(), *url, name, iconName});
        }
    };
    add("Home", folders.home, "house");
    add("Documents", folders.documents, "doc.text");
    add("Downloads", folders.downloads, "arrow.down.circle");
    add("Desktop", folders.desktop, "desktopcomputer");
    publish(m_favorites, std::move(favorites));
}

void MainViewModel::loadHistory()
{
    attempt([this] { publish(m_scanHistory, m_environment.store.loadHistory()); });
}

void MainViewModel::loadHistoricalScan(const HistoricalScan& scan)
{
    m_scanner->cancelScan();
    resetSession();
    std::optional<FileNode> root;
    if (!attempt([&] { root = m_environment.store.loadScanTree(scan.id); })) {
        return;
    }
    if (root) {
        showTree(*root);
        m_scanner->setScannedFilesCount(root->fileCount());
        m_scanner->setScannedDirsCount(root->directoryCount());
        m_scanner->setTotalSize(root->size());
        m_scanner->setScanResult(*root);
    } else {
        deleteHistoryItem(scan.id);
        m_scanner->setErrorMessage(QStringLiteral("Failed to load historical scan tree cache."));
    }
}

void MainViewModel::deleteHistoryItem(Uuid id)
{
    attempt([&] { m_environment.store.deleteScan(id); });
    loadHistory();
}

} // namespace morlaine
