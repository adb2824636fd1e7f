#pragma once

#include "Core/Scanner/DiskScanner.h"
#include "Platform/StandardFolders.h"
#include "Platform/Volumes.h"
#include "Platform/Workspace.h"
#include "Services/Persistence/PersistenceManager.h"
#include "Services/Search/SearchIndex.h"
#include "UI/Views/State/FavoriteFolder.h"
#include "UI/Views/State/VolumeInfo.h"
#include "Utilities/ObservableObject.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace morlaine {

/// The state of the window: the scanner, the tree of the current scan and the zoom path into it, the selection, the
/// search, and the sidebar's lists. Views read its properties and call its operations; they do not call the scanner,
/// the index or the store. Lives as long as the window. Main thread only.
///
/// Each change of a published property, including those of the scanner, is announced by `objectWillChange` before it
/// happens; views read again through a ChangeObserver. Nodes are values: two nodes are the same when their ids are
/// equal. No operation reports an error to its caller.
class MainViewModel final : public ObservableObject {
    Q_OBJECT

public:
    /// The services that the model uses. The store must outlive the model.
    struct Environment {
        std::shared_ptr<const FileSystem> fileSystem;
        std::shared_ptr<const Volumes> volumes;
        UserFolders userFolders;
        std::shared_ptr<Workspace> workspace;
        PersistenceManager& store;
    };

    /// Loads the sidebar's lists. Destroying the model abandons a running scan, while a tree that is being written is
    /// written to its end; nothing waits for either.
    explicit MainViewModel(Environment environment, QObject* parent = nullptr);

    /// For reading the progress of a scan.
    [[nodiscard]] const DiskScanner& scanner() const { return *m_scanner; }

    /// The root of the tree that is shown: the scanned folder.
    [[nodiscard]] const std::optional<FileNode>& currentRootNode() const { return m_currentRootNode; }

    /// What the inspector shows.
    [[nodiscard]] const std::optional<FileNode>& selectedNode() const { return m_selectedNode; }
    void setSelectedNode(std::optional<FileNode> node);

    /// The folders zoomed into, outermost first. The setter does not change selection and history.
    [[nodiscard]] const std::vector<FileNode>& zoomStack() const { return m_zoomStack; }
    void setZoomStack(std::vector<FileNode> zoomStack);

    /// The inputs of the search. Each assignment searches at once. The size is in bytes.
    [[nodiscard]] const QString& searchText() const { return m_searchText; }
    [[nodiscard]] std::optional<FileCategory> selectedCategory() const { return m_selectedCategory; }
    [[nodiscard]] std::optional<std::int64_t> minSizeFilter() const { return m_minSizeFilter; }
    void setSearchText(const QString& text);
    void setSelectedCategory(std::optional<FileCategory> category);
    void setMinSizeFilter(std::optional<std::int64_t> bytes);

    /// The hits of the search, and their ids for highlighting.
    [[nodiscard]] const SearchResults& searchResults() const { return m_searchResults; }
    [[nodiscard]] const NodeIDSet& highlightIDs() const { return m_highlightIDs; }

    [[nodiscard]] const std::vector<VolumeInfo>& volumes() const { return m_volumes; }
    [[nodiscard]] const std::vector<FavoriteFolder>& favorites() const { return m_favorites; }

    /// Recent scans, newest first.
    [[nodiscard]] const std::vector<HistoricalScan>& scanHistory() const { return m_scanHistory; }

    /// The folder that the treemap shows: the innermost one zoomed into, otherwise the root.
    [[nodiscard]] std::optional<FileNode> activeRootNode() const;

    [[nodiscard]] bool canGoBack() const { return !m_backStack.empty(); }
    [[nodiscard]] bool canGoForward() const { return !m_forwardStack.empty(); }

    /// Clears the session and scans a folder. A finished scan is shown and saved within half a second of its end.
    void scan(const FileUrl& url);

    /// Asks the scanner to stop. Changes nothing else.
    void cancelScan();

    /// Zooms into a folder, inside the current one or not. Does nothing for a file.
    void zoomIn(FileNode node);

    /// Leaves the innermost folder zoomed into. `navigateBack` returns to it.
    void zoomOut();

    /// Shows the whole tree. Does not change the history.
    void zoomToRoot();

    /// Go to the previous or the next view. If the previous folder is not on the zoom path, shows the whole tree and
    /// selects that folder.
    void navigateBack();
    void navigateForward();

    /// Show the item in the file manager, open it with its default application, copy its path. By its exact location,
    /// whether or not it still exists.
    void revealInFinder(const FileNode& node);
    void openFile(const FileNode& node);
    void copyPathToClipboard(const FileNode& node);

    /// Reload the sidebar's lists.
    void loadVolumes();
    void loadFavorites();
    void loadHistory();

    /// Shows the saved tree of a recent scan. If the tree cannot be read, deletes the entry and reports it in the
    /// scanner's `errorMessage`. If memory runs out, keeps the entry.
    void loadHistoricalScan(const HistoricalScan& scan);

    /// Reports in the scanner's `errorMessage` that memory has run out.
    void reportLackOfMemory();

    /// Deletes a recent scan. The tree that is shown stays.
    void deleteHistoryItem(Uuid id);

private:
    void resetSession();
    void startWatcher();
    void showFinishedScan();
    void showTree(const FileNode& root);
    void performSearch();

    /// Runs `work`. If memory runs out, reports it and returns false.
    template <typename Work>
    bool attempt(Work work);

    const Environment m_environment;
    const std::unique_ptr<DiskScanner> m_scanner;

    std::optional<FileNode> m_currentRootNode;
    std::optional<FileNode> m_selectedNode;
    std::vector<FileNode> m_zoomStack;
    QString m_searchText = QStringLiteral("");
    std::optional<FileCategory> m_selectedCategory;
    std::optional<std::int64_t> m_minSizeFilter;
    SearchResults m_searchResults;
    NodeIDSet m_highlightIDs;
    std::vector<VolumeInfo> m_volumes;
    std::vector<FavoriteFolder> m_favorites;
    std::vector<HistoricalScan> m_scanHistory;

    std::optional<SearchIndex> m_searchIndex;
    std::vector<FileNode> m_backStack;    // most recent last
    std::vector<FileNode> m_forwardStack; // most recent last
};

} // namespace morlaine
