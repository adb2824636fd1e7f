#include "Core/Scanner/DiskScanner.h"

#include "Core/Scanner/DiskWalk.h"
#include "Platform/Background.h"
#include "Utilities/Utf8.h"

#include <QTimer>

#include <exception>
#include <new>
#include <system_error>
#include <utility>

namespace morlaine {

namespace {

constexpr std::chrono::milliseconds clockInterval{100};

QString cancellationMessage()
{
    return QStringLiteral("Scan cancelled by user.");
}

QString descriptionOf(const std::exception& error)
{
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return QStringLiteral("There is not enough memory to scan this folder.");
    }
    return QString::fromLocal8Bit(error.what());
}

} // namespace

/// The background part of one scan. It never dereferences the scanner; it only names it in posted tasks, which the
/// queue drops once the scanner is destroyed.
class DiskScanner::Walker {
public:
    Walker(DiskScanner& scanner, FileUrl url, std::stop_token stopToken)
        : m_scanner(&scanner)
        , m_fileSystem(scanner.m_fileSystem)
        , m_mainThread(scanner.m_mainThread.poster())
        , m_url(std::move(url))
        , m_stopToken(std::move(stopToken))
    {
    }

    void operator()() const
    {
        try {
            post([root = walk()](DiskScanner& scanner) { scanner.finish(root); });
        } catch (const ScanCancelled&) {
            post([](DiskScanner& scanner) { scanner.fail(cancellationMessage()); });
        } catch (const std::exception& error) {
            post([message = descriptionOf(error)](DiskScanner& scanner) { scanner.fail(message); });
        }
    }

private:
    [[nodiscard]] FileNode walk() const
    {
        const auto showProgress = [this](const auto&... progress) {
            post([progress...](DiskScanner& scanner) { scanner.showProgress(progress...); });
        };
        DiskWalk walk(m_fileSystem, m_stopToken, showProgress, m_fileSystem->usefulReaders());
        return walk.scan(m_url);
    }

    template <typename Task>
    void post(Task task) const
    {
        m_mainThread.post([scanner = m_scanner, task = std::move(task)] { task(*scanner); });
    }

    DiskScanner* m_scanner;
    std::shared_ptr<const FileSystem> m_fileSystem;
    MainThreadQueue::Poster m_mainThread;
    FileUrl m_url;
    std::stop_token m_stopToken;
};

DiskScanner::DiskScanner(std::shared_ptr<const FileSystem> fileSystem, QObject* parent)
    : ObservableObject(parent)
    , m_fileSystem(std::move(fileSystem))
{
}

DiskScanner::~DiskScanner()
{
    if (m_scanTask) {
        m_scanTask->request_stop();
    }
}

void DiskScanner::startScan(const FileUrl& url)
{
    cancelScan();
    publish(m_currentPath, textOfUtf8(url.path()));
    publish(m_scannedFilesCount, 0);
    publish(m_scannedDirsCount, 0);
    publish(m_totalSize, 0);
    publish(m_elapsedTime, 0.0);
    publish(m_scanResult, std::nullopt);
    publish(m_errorMessage, std::nullopt);
    m_startTime = Clock::now();
    publish(m_isScanning, true);
    startClock();
    startWalk(url);
}

void DiskScanner::cancelScan()
{
    if (m_scanTask) {
        m_scanTask->request_stop();
        m_scanTask.reset();
    }
    stopClock();
    publish(m_isScanning, false);
}

void DiskScanner::publishError(const QString& message)
{
    publish(m_errorMessage, message);
    Q_EMIT failed();
}

void DiskScanner::startClock()
{
    m_timer = std::make_unique<QTimer>();
    m_timer->setTimerType(Qt::PreciseTimer);
    m_timer->setInterval(clockInterval);
    connect(m_timer.get(), &QTimer::timeout, this, [this] { m_mainThread.post([this] { tick(); }); });
    m_timer->start();
}

void DiskScanner::stopClock()
{
    m_timer.reset();
}

/// A tick that was posted before the clock stopped must not change the final time.
void DiskScanner::tick()
{
    if (m_timer) {
        updateElapsedTime();
    }
}

void DiskScanner::updateElapsedTime()
{
    if (m_startTime) {
        publish(m_elapsedTime, std::chrono::duration<double>(Clock::now() - *m_startTime).count());
    }
}

void DiskScanner::startWalk(const FileUrl& url)
{
    m_scanTask.emplace();
    const std::error_code failure =
        Background::start("scan", Background::Priority::userInitiated, Walker(*this, url, m_scanTask->get_token()));
    if (failure) {
        m_mainThread.post([this, message = QString::fromStdString(failure.message())] { fail(message); });
    }
}

void DiskScanner::showProgress(const std::string& path, std::int64_t filesCount, std::int64_t dirsCount,
                               std::int64_t totalSize)
{
    if (!m_isScanning) {
        return;
    }
    publish(m_currentPath, textOfUtf8(path));
    publish(m_scannedFilesCount, filesCount);
    publish(m_scannedDirsCount, dirsCount);
    publish(m_totalSize, totalSize);
}

void DiskScanner::finish(const FileNode& root)
{
    publish(m_scanResult, std::optional(root));
    cleanup();
}

void DiskScanner::fail(const QString& message)
{
    cleanup();
    publishError(message);
}

void DiskScanner::cleanup()
{
    publish(m_isScanning, false);
    stopClock();
    updateElapsedTime();
}

} // namespace morlaine
