#pragma once

#include "Core/Models/FileNode.h"
#include "Services/Persistence/HistoricalScan.h"
#include "Utilities/FileUrl.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace morlaine {

/// Keeps finished scans on disk, so that they open again without scanning: a list in `history.json`, and the tree of
/// each scan in `Scans/<ID>.json`, below the user's folder for application data. All files are readable by this user
/// only.
///
/// No operation reports a failure: an unreadable file counts as missing, and a failed write leaves the old file
/// unchanged. If memory runs out while a file is read, std::bad_alloc is thrown and nothing on disk changes. Nothing is
/// cached: each operation reads the list and writes it whole. If two programs save at the same moment, one may lose the
/// other's entry, but never a tree or the whole list. Main thread only; tree files are written in the background.
class PersistenceManager {
public:
    /// The default store, made on first use. Ends the program if the user has no folder for application data.
    [[nodiscard]] static PersistenceManager& shared();

    /// A store below the given folder for application data.
    explicit PersistenceManager(const FileUrl& applicationSupport);
    PersistenceManager(const PersistenceManager&) = delete;
    PersistenceManager& operator=(const PersistenceManager&) = delete;

    /// The saved scans, newest first; scans of the same date in the order of the file.
    [[nodiscard]] std::vector<HistoricalScan> loadHistory() const;

    /// Records a finished scan and returns its entry. The tree is written in the background.
    HistoricalScan saveScan(const FileNode& rootNode, std::int64_t filesCount, std::int64_t dirsCount);

    /// The tree of a saved scan; nothing if its file is missing, incomplete or broken.
    [[nodiscard]] std::optional<FileNode> loadScanTree(const Uuid& id) const;

    /// Removes a scan from the list, and its tree.
    void deleteScan(const Uuid& id);

    /// Empties the list and the folder `Scans`, foreign files included.
    void clearAllHistory();

private:
    void saveHistory(const std::vector<HistoricalScan>& history) const;
    void tidyUp() const;
    [[nodiscard]] FileUrl treeUrl(const Uuid& id) const;

    const FileUrl m_appSupportURL;
    const FileUrl m_scansDirectoryURL;
    const FileUrl m_indexURL;
};

} // namespace morlaine
