#include "Platform/PrivateFiles.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morlaine {

namespace {

constexpr std::string_view temporarySuffix = ".XXXXXX";

bool isTemporaryName(std::string_view name)
{
    const std::string_view suffix = name.substr(name.size() - std::min(name.size(), temporarySuffix.size()));
    const std::string_view target = name.substr(0, name.size() - suffix.size());
    const auto isRandom = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
    return target.ends_with(".json") && suffix.front() == '.' && std::ranges::all_of(suffix.substr(1), isRandom);
}

} // namespace

bool makePrivateFolder(const FileUrl& folder)
{
    const std::string path = folder.path();
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        ::mkdir(path.substr(0, slash).c_str(), 0700);
    }
    ::mkdir(path.c_str(), 0700);
    std::error_code failure;
    return std::filesystem::is_directory(path, failure);
}

bool removeItem(const FileUrl& item)
{
    std::error_code failure;
    std::filesystem::remove_all(item.path(), failure);
    return !failure;
}

AtomicFile::AtomicFile(const FileUrl& target)
    : m_target(target.path())
    , m_temporary(m_target + std::string(temporarySuffix))
{
    m_descriptor = ::mkostemp(m_temporary.data(), O_CLOEXEC);
    if (m_descriptor < 0) {
        m_temporary.clear();
        return;
    }
    open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

AtomicFile::~AtomicFile()
{
    discard();
}

bool AtomicFile::commit()
{
    if (!isOpen()) {
        return false;
    }
    QIODevice::close();
    const bool isOnDisk = !m_hasFailed && ::fsync(m_descriptor) == 0;
    if (!isOnDisk || ::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
        discard();
        return false;
    }
    m_temporary.clear();
    discard();
    return true;
}

void AtomicFile::removeAbandoned(const FileUrl& folder)
{
    const auto newest = std::filesystem::file_time_type::clock::now() - std::chrono::hours(24);
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(folder.path(), failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code unknown;
        if (isTemporaryName(entry->path().filename().native()) && entry->last_write_time(unknown) < newest &&
            !unknown) {
            std::filesystem::remove(entry->path(), unknown);
        }
    }
}

void AtomicFile::discard()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
    if (!m_temporary.empty()) {
        ::unlink(m_temporary.c_str());
        m_temporary.clear();
    }
}

qint64 AtomicFile::readData(char* /*data*/, qint64 /*maxSize*/)
{
    return -1;
}

qint64 AtomicFile::writeData(const char* data, qint64 size)
{
    for (qint64 done = 0; done < size;) {
        const ssize_t written = ::write(m_descriptor, data + done, static_cast<std::size_t>(size - done));
        if (written > 0) {
            done += written;
        } else if (written == 0 || errno != EINTR) {
            m_hasFailed = true;
            return -1;
        }
    }
    return size;
}

} // namespace morlaine
