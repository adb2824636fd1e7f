#pragma once

#include "Core/Models/FileNode.h"
#include "Services/Persistence/HistoricalScan.h"
#include "Utilities/FileUrl.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace morlaine {

/// Keeps finished scans on disk, to be opened again without scanning: a list of them in `history.json` and the tree of
/// each in `Scans/<ID>.json`, below the user's folder for application data. Everything is readable by this user alone.
///
/// No operation reports a failure: what cannot be read is not there, and what cannot be written leaves the old file
/// whole. Where memory does not suffice to read a file, std::bad_alloc is thrown and nothing on disk is changed. The
/// list is read afresh and written whole by each operation and nothing is kept in memory; of two programs that save at
/// the same moment, one may lose the other's entry in the list (never a tree, nor the list as such). Main thread only;
/// the tree files are written on a thread of their own.
class PersistenceManager {
public:
    /// The one store, made on first use. Ends the program where there is no folder for application data at all.
    [[nodiscard]] static PersistenceManager& shared();

    /// A store below another folder for application data.
    explicit PersistenceManager(const FileUrl& applicationSupport);
    PersistenceManager(const PersistenceManager&) = delete;
    PersistenceManager& operator=(const PersistenceManager&) = delete;

    /// The saved scans, newest first; those of the same date as they stand in the file.
    [[nodiscard]] std::vector<HistoricalScan> loadHistory() const;

    /// Records a finished scan, and returns its entry while the tree is still being written behind everything else.
    HistoricalScan saveScan(const FileNode& rootNode, std::int64_t filesCount, std::int64_t dirsCount);

    /// The tree of a saved scan; nothing when its file is missing, not yet complete, or broken.
    [[nodiscard]] std::optional<FileNode> loadScanTree(const Uuid& id) const;

    /// Removes a scan from the list and its tree from the disk.
    void deleteScan(const Uuid& id);

    /// Empties the list and removes whatever lies in `Scans`, whoever put it there.
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
