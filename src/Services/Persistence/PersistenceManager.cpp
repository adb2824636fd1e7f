#include "Services/Persistence/PersistenceManager.h"

#include "Core/Models/FileNodeJson.h"
#include "Platform/Background.h"
#include "Platform/PrivateFiles.h"
#include "Platform/StandardFolders.h"
#include "Utilities/Utf8.h"

#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <variant>

namespace morlaine {

namespace {

FileUrl preferredApplicationSupport()
{
    const std::vector<FileUrl> folders = applicationSupportFolders();
    if (folders.empty()) {
        std::abort();
    }
    return folders.front();
}

/// What `decode` makes of the file; nothing when it cannot be read or decoded.
template <typename Value>
std::optional<Value> decodedFile(const FileUrl& url, std::variant<Value, DecodeError> (*decode)(QIODevice&))
{
    std::error_code failure;
    QFile file(QFile::decodeName(url.path().c_str()));
    if (!std::filesystem::is_regular_file(url.path(), failure) ||
        !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return std::nullopt;
    }
    std::variant<Value, DecodeError> result = decode(file);
    return std::holds_alternative<Value>(result) ? std::optional(std::get<Value>(std::move(result))) : std::nullopt;
}

} // namespace

PersistenceManager& PersistenceManager::shared()
{
    static PersistenceManager manager(preferredApplicationSupport());
    return manager;
}

PersistenceManager::PersistenceManager(const FileUrl& applicationSupport)
    : m_appSupportURL(applicationSupport.appending("com.morlaine.Morlaine"))
    , m_scansDirectoryURL(m_appSupportURL.appending("Scans"))
    , m_indexURL(m_appSupportURL.appending("history.json"))
{
    makePrivateFolder(m_scansDirectoryURL);
    AtomicFile::removeAbandoned(m_appSupportURL);
    AtomicFile::removeAbandoned(m_scansDirectoryURL);
}

std::vector<HistoricalScan> PersistenceManager::loadHistory() const
{
    std::vector<HistoricalScan> history =
        decodedFile(m_indexURL, decodeHistory).value_or(std::vector<HistoricalScan>());
    std::ranges::stable_sort(history, std::ranges::greater(), &HistoricalScan::date);
    return history;
}

HistoricalScan PersistenceManager::saveScan(const FileNode& rootNode, std::int64_t filesCount, std::int64_t dirsCount)
{
    HistoricalScan scan{Uuid::random(), validUtf8(rootNode.url().path()), Date::now(), rootNode.size(), filesCount,
                        dirsCount};
    std::vector<HistoricalScan> history = loadHistory();
    history.push_back(scan);
    saveHistory(history);
    runInBackground("save scan", [rootNode, url = treeUrl(scan.id)] {
        AtomicFile file(url);
        if (file.isOpen() && encodeFileNode(rootNode, file)) {
            (void)file.commit();
        }
    });
    return scan;
}

std::optional<FileNode> PersistenceManager::loadScanTree(const Uuid& id) const
{
    return decodedFile(treeUrl(id), decodeFileNode);
}

void PersistenceManager::deleteScan(const Uuid& id)
{
    std::vector<HistoricalScan> history = loadHistory();
    std::erase_if(history, [&id](const HistoricalScan& scan) { return scan.id == id; });
    saveHistory(history);
    removeItem(treeUrl(id));
}

void PersistenceManager::clearAllHistory()
{
    saveHistory({});
    std::error_code failure;
    std::vector<std::string> names;
    for (std::filesystem::directory_iterator entry(m_scansDirectoryURL.path(), failure), end; !failure && entry != end;
         entry.increment(failure)) {
        names.push_back(entry->path().filename().native());
    }
    for (const std::string& name : names) {
        removeItem(m_scansDirectoryURL.appending(name));
    }
}

void PersistenceManager::saveHistory(const std::vector<HistoricalScan>& history) const
{
    AtomicFile file(m_indexURL);
    if (file.isOpen() && encodeHistory(history, file)) {
        (void)file.commit();
    }
}

FileUrl PersistenceManager::treeUrl(const Uuid& id) const
{
    return m_scansDirectoryURL.appending(id.toString() + ".json");
}

} // namespace morlaine
