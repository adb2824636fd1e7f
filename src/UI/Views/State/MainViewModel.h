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

/// The one application-state object of the window: the scanner, the tree of the current scan with the zoom path into
/// it, what is selected, the search, and the sidebar's lists. Views read what it publishes and call its operations;
/// none talks to the scanner, the index or the store. Lives as long as the window; main thread only.
///
/// Each change of a published property, the scanner's included, is announced by `objectWillChange` before it happens; a
/// view re-reads through a ChangeObserver. Nodes are copies: two are the same when their ids are equal. No operation
/// reports an error to its caller.
class MainViewModel final : public ObservableObject {
    Q_OBJECT

public:
    /// What the state needs of the system. The store must outlive the model.
    struct Environment {
        std::shared_ptr<const FileSystem> fileSystem;
        std::shared_ptr<const Volumes> volumes;
        UserFolders userFolders;
        std::shared_ptr<Workspace> workspace;
        PersistenceManager& store;
    };

    /// Fills the sidebar's lists. When the model goes, a running scan is abandoned and a tree that is being written
    /// goes on being written; nothing waits for either.
    explicit MainViewModel(Environment environment, QObject* parent = nullptr);

    /// Its progress values are read through it.
    [[nodiscard]] const DiskScanner& scanner() const { return *m_scanner; }

    /// The root of the tree that is shown: the scanned folder.
    [[nodiscard]] const std::optional<FileNode>& currentRootNode() const { return m_currentRootNode; }

    /// What the inspector shows.
    [[nodiscard]] const std::optional<FileNode>& selectedNode() const { return m_selectedNode; }
    void setSelectedNode(std::optional<FileNode> node);

    /// The folders zoomed into, outermost first. Setting it leaves selection and history alone.
    [[nodiscard]] const std::vector<FileNode>& zoomStack() const { return m_zoomStack; }
    void setZoomStack(std::vector<FileNode> zoomStack);

    /// The inputs of the search; each assignment searches at once. The size is in bytes.
    [[nodiscard]] const QString& searchText() const { return m_searchText; }
    [[nodiscard]] std::optional<FileCategory> selectedCategory() const { return m_selectedCategory; }
    [[nodiscard]] std::optional<std::int64_t> minSizeFilter() const { return m_minSizeFilter; }
    void setSearchText(const QString& text);
    void setSelectedCategory(std::optional<FileCategory> category);
    void setMinSizeFilter(std::optional<std::int64_t> bytes);

    /// What was found, and its ids for highlighting.
    [[nodiscard]] const SearchResults& searchResults() const { return m_searchResults; }
    [[nodiscard]] const NodeIDSet& highlightIDs() const { return m_highlightIDs; }

    [[nodiscard]] const std::vector<VolumeInfo>& volumes() const { return m_volumes; }
    [[nodiscard]] const std::vector<FavoriteFolder>& favorites() const { return m_favorites; }

    /// Earlier scans, newest first.
    [[nodiscard]] const std::vector<HistoricalScan>& scanHistory() const { return m_scanHistory; }

    /// The folder that the treemap shows: the innermost one zoomed into, else the root.
    [[nodiscard]] std::optional<FileNode> activeRootNode() const;

    [[nodiscard]] bool canGoBack() const { return !m_backStack.empty(); }
    [[nodiscard]] bool canGoForward() const { return !m_forwardStack.empty(); }

    /// Empties the session and scans a folder. Within half a second of its end a finished scan is shown and saved.
    void scan(const FileUrl& url);

    /// Asks the scanner to stop, nothing else.
    void cancelScan();

    /// Zooms into a folder, whether it lies inside what is shown or not. Does nothing for a file.
    void zoomIn(FileNode node);

    /// Leaves the innermost folder zoomed into, which becomes what `navigateBack` goes to.
    void zoomOut();

    /// Shows the whole tree again. The way back and forward stays as it is.
    void zoomToRoot();

    /// Go to the previous and the next view. Going back to a folder that is not on the zoom path shows the whole tree
    /// and selects that folder.
    void navigateBack();
    void navigateForward();

    /// Shows the item in the desktop's file manager; opens it with its default application; puts its path on the
    /// clipboard. By its exact location, whether or not it still exists.
    void revealInFinder(const FileNode& node);
    void openFile(const FileNode& node);
    void copyPathToClipboard(const FileNode& node);

    /// Reread the sidebar's lists.
    void loadVolumes();
    void loadFavorites();
    void loadHistory();

    /// Shows the tree of an earlier scan from its cache. An entry whose tree cannot be read is deleted, and the
    /// scanner's `errorMessage` says so. Where memory does not suffice, the entry stays.
    void loadHistoricalScan(const HistoricalScan& scan);

    /// Says in the scanner's `errorMessage` that memory did not suffice for what the user asked for.
    void reportLackOfMemory();

    /// Deletes an earlier scan; the tree that is shown stays.
    void deleteHistoryItem(Uuid id);

private:
    void resetSession();
    void startWatcher();
    void showFinishedScan();
    void showTree(const FileNode& root);
    void performSearch();

    /// Runs `work`; where memory does not suffice for it, `errorMessage` says so, and false is returned.
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
    std::vector<FileNode> m_backStack;    // the most recent last
    std::vector<FileNode> m_forwardStack; // the most recent last
};

} // namespace morlaine
