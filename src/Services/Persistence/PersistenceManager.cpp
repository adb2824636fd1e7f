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
#include <memory>
#include <new>
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

/// Reads and decodes a file; nothing when it cannot be read or decoded. Throws std::bad_alloc: running out of memory
/// does not mean that the file is broken.
template <typename Value>
std::optional<Value> decodedFile(const FileUrl& url, std::variant<Value, DecodeError> (*decode)(QIODevice&))
{
    QFile file;
    if (!openRegularFile(file, url)) {
        return std::nullopt;
    }
    std::variant<Value, DecodeError> result = decode(file);
    if (const auto* error = std::get_if<DecodeError>(&result); error != nullptr && error->isOutOfMemory) {
        throw std::bad_alloc();
    }
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
    tidyUp();
}

/// Removes temporary files of programs that were killed. If a crash of the machine has broken the list, restores the
/// newest older list that can be read.
void PersistenceManager::tidyUp() const
{
    for (const AtomicFile::Abandoned& unfinished : AtomicFile::abandonedIn(m_scansDirectoryURL)) {
        removeItem(unfinished.url);
    }
    const std::vector<AtomicFile::Abandoned> formerLists = AtomicFile::abandonedIn(m_appSupportURL);
    if (formerLists.empty()) {
        return;
    }
    std::error_code failure;
    const auto isList = [](const FileUrl& url) { return decodedFile(url, decodeHistory).has_value(); };
    if (std::filesystem::is_regular_file(m_indexURL.path(), failure) && !isList(m_indexURL)) {
        const auto newest = std::ranges::find_if(formerLists, isList, &AtomicFile::Abandoned::url);
        if (newest != formerLists.end()) {
            std::filesystem::rename(newest->url.path(), m_indexURL.path(), failure);
        }
    }
    runInBackground("flush list", [index = m_indexURL, formerLists] { AtomicFile::flush(index, formerLists); });
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
    // Made before the entry, so that deleting the entry also finds and removes this file.
    const auto file = std::make_shared<AtomicFile>(treeUrl(scan.id));
    std::vector<HistoricalScan> history = loadHistory();
    history.push_back(scan);
    saveHistory(history);
    runInBackground("save scan", [rootNode, file] {
        if (file->isOpen() && encodeFileNode(rootNode, *file)) {
            (void)file->commit();
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
    AtomicFile::remove(treeUrl(id));
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
    const auto file = std::make_shared<AtomicFile>(m_indexURL);
    if (file->isOpen() && encodeHistory(history, *file) && file->commitUnflushed()) {
        runInBackground("flush list", [file] { file->flush(); });
    }
}

FileUrl PersistenceManager::treeUrl(const Uuid& id) const
{
    return m_scansDirectoryURL.appending(id.toString() + ".json");
}

} // namespace morlaine
