#pragma once

#include "Core/Models/FileNode.h"
#include "Core/Models/TreeBuilder.h"
#include "Core/Scanner/DescentStack.h"
#include "Core/Scanner/ExclusionRules.h"
#include "Core/Scanner/ScanStats.h"
#include "Platform/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

/// Thrown by a walk that was asked to stop.
struct ScanCancelled {};

/// One walk through a folder: depth first, one item at a time, on the thread that calls `scan`. An item that cannot be
/// read becomes a node of size 0. Use once.
class DiskWalk {
public:
    /// Reports progress on the walking thread, at most every 0.1 seconds: the path of the last counted item (exact
    /// bytes), and the number of files, folders and bytes so far.
    using UpdateCallback = std::function<void(const std::string& path, std::int64_t filesCount, std::int64_t dirsCount,
                                              std::int64_t totalSize)>;

    /// Uses up to `readers` threads that list folders ahead. They change neither the tree nor the order of reports.
    DiskWalk(std::shared_ptr<const FileSystem> fileSystem, std::stop_token stopToken, UpdateCallback updateCallback,
             std::size_t readers = 0);

    ~DiskWalk();
    DiskWalk(const DiskWalk&) = delete;
    DiskWalk& operator=(const DiskWalk&) = delete;

    /// Scans the tree at `url`, whose last component is not resolved if it is a link. Throws ScanCancelled soon after
    /// the stop token was triggered, TreeTooLarge, std::bad_alloc, and anything that the file system throws.
    [[nodiscard]] FileNode scan(const FileUrl& url);

private:
    struct Item;
    struct OpenDirectory;
    struct OpenPackage;

    void scanNode(const FileUrl& url);
    void visit(const Item& item);
    void visitNextEntry();
    void enterDirectory(const Item& item);
    void leaveDirectory();
    void measureFile(const Item& item);
    void measurePackage(const Item& item);

    TreeBuilder::Position addLeaf(const Item& item, std::int64_t size, bool isDirectory, FileCategory category);
    void addWithEmptyList(const Item& item, bool isDirectory);

    [[nodiscard]] std::string pathOf(const Item& item);
    [[nodiscard]] std::unique_ptr<Folder> openFolder(const Item& item) const;

    [[nodiscard]] bool list(Folder& folder, FolderContents& contents) const;
    [[nodiscard]] FolderContents takeSpareContents();
    void giveBack(FolderContents&& contents);

    [[nodiscard]] std::int64_t calculateSizeOfPackage(std::unique_ptr<Folder> package) const;

    void throwIfCancelled() const;
    void reportAtIntervals(const Item& item);

    const std::shared_ptr<const FileSystem> m_fileSystem;
    const std::stop_token m_stopToken;
    const UpdateCallback m_updateCallback;
    const std::size_t m_readers;

    ScanStats m_stats;
    TreeBuilder m_tree{TreeBuilder::Source::measured};
    ExclusionRules m_rules;
    std::string m_path; // of the current item, standardised
    DescentStack<OpenDirectory> m_openDirectories;
    std::vector<FolderContents> m_spareContents; // buffers of folders that were left, for reuse
};

} // namespace morlaine
