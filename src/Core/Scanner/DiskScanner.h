#pragma once

#include "Core/Models/FileNode.h"
#include "Platform/FileSystem.h"
#include "Platform/MainThreadQueue.h"
#include "Utilities/ObservableObject.h"

#include <QString>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>

class QTimer;

namespace morlaine {

/// Scans one folder at a time into a tree and publishes the progress. The walk runs in the background; everything here
/// belongs to the main thread. Published properties change during the calls below, and from the event loop while a walk
/// reports or the clock ticks.
///
/// A successful scan sets `scanResult`, then `isScanning` to false. A failed scan sets `isScanning` to false, then
/// `errorMessage`. A cancelled scan sets `isScanning` to false at once; its message follows when the walk has stopped.
/// The walk of a previous scan reports its end in the same properties: a message may belong to a previous scan, and its
/// end also stops the progress of the current one.
///
/// Destroying the scanner abandons a running walk; nothing waits for it.
class DiskScanner : public ObservableObject {
    Q_OBJECT

public:
    explicit DiskScanner(std::shared_ptr<const FileSystem> fileSystem = FileSystem::native(),
                         QObject* parent = nullptr);
    ~DiskScanner() override;

    /// Starts a scan of `url`; cancels a running one first. Returns at once.
    void startScan(const FileUrl& url);

    /// Stops the running scan, if any. Returns at once.
    void cancelScan();

    [[nodiscard]] bool isScanning() const { return m_isScanning; }

    /// The path last reported by the walk, as text to show.
    [[nodiscard]] const QString& currentPath() const { return m_currentPath; }

    /// Files and packages so far.
    [[nodiscard]] std::int64_t scannedFilesCount() const { return m_scannedFilesCount; }

    /// Folders so far, the top included.
    [[nodiscard]] std::int64_t scannedDirsCount() const { return m_scannedDirsCount; }

    /// Bytes so far.
    [[nodiscard]] std::int64_t totalSize() const { return m_totalSize; }

    /// Seconds since the scan started; exact after its end.
    [[nodiscard]] double elapsedTime() const { return m_elapsedTime; }

    /// The tree of the last finished scan.
    [[nodiscard]] const std::optional<FileNode>& scanResult() const { return m_scanResult; }

    /// Why the last scan ended without a result.
    [[nodiscard]] const std::optional<QString>& errorMessage() const { return m_errorMessage; }

    // For showing a tree that was not scanned. Each announces its change and has no other effect.
    void setScannedFilesCount(std::int64_t count) { publish(m_scannedFilesCount, count); }
    void setScannedDirsCount(std::int64_t count) { publish(m_scannedDirsCount, count); }
    void setTotalSize(std::int64_t bytes) { publish(m_totalSize, bytes); }
    void setScanResult(const FileNode& root) { publish(m_scanResult, std::optional(root)); }
    void setErrorMessage(const QString& message) { publishError(message); }

Q_SIGNALS:
    /// `errorMessage` was set, possibly to the same text.
    void failed();

private:
    using Clock = std::chrono::steady_clock;
    class Walker;

    void publishError(const QString& message);

    void startClock();
    void stopClock();
    void tick();
    void updateElapsedTime();
    void startWalk(const FileUrl& url);
    void showProgress(const std::string& path, std::int64_t filesCount, std::int64_t dirsCount, std::int64_t totalSize);
    void finish(const FileNode& root);
    void fail(const QString& message);
    void cleanup();

    const std::shared_ptr<const FileSystem> m_fileSystem;

    bool m_isScanning = false;
    QString m_currentPath = QStringLiteral("");
    std::int64_t m_scannedFilesCount = 0;
    std::int64_t m_scannedDirsCount = 0;
    std::int64_t m_totalSize = 0;
    double m_elapsedTime = 0;
    std::optional<FileNode> m_scanResult;
    std::optional<QString> m_errorMessage;

    std::optional<std::stop_source> m_scanTask;
    std::optional<Clock::time_point> m_startTime;
    std::unique_ptr<QTimer> m_timer;
    MainThreadQueue m_mainThread;
};

} // namespace morlaine
