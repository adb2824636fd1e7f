#include "Platform/PrivateFiles.h"

#include "Platform/Linux/FileDescriptor.h"
#include "Platform/Linux/TemporaryNames.h"
#include "Platform/Linux/Uninterrupted.h"

#include <QFile>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morlaine {

namespace {

constexpr std::string_view temporaryStart = ".morlaine-";
constexpr std::string_view temporaryEnd = ".tmp";
constexpr std::string_view randomPart = "-XXXXXX";

/// The prefix of the paths of temporary files for `target`.
std::string temporaryPrefix(const std::string& target)
{
    const std::size_t name = target.rfind('/') + 1;
    return target.substr(0, name) + std::string(temporaryStart) + target.substr(name);
}

bool isTemporaryName(std::string_view name)
{
    const std::size_t tail = randomPart.size() + temporaryEnd.size();
    if (!name.starts_with(temporaryStart) || !name.ends_with(temporaryEnd) ||
        name.size() <= temporaryStart.size() + tail) {
        return false;
    }
    const std::string_view random = name.substr(name.size() - tail, randomPart.size());
    const auto isRandom = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
    return random.front() == '-' && std::ranges::all_of(random.substr(1), isRandom);
}

std::vector<std::string> temporaryFilesIn(const std::string& folder)
{
    std::vector<std::string> paths;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        if (isTemporaryName(entry->path().filename().native())) {
            paths.push_back(entry->path().native());
        }
    }
    return paths;
}

FileDescriptor opened(const std::string& path, int flags)
{
    flags |= O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    return FileDescriptor(uninterrupted([&] { return ::open(path.c_str(), flags); }));
}

/// Says in errno why there is none.
FileDescriptor openedRegularFile(const std::string& path, int flags)
{
    struct stat status = {};
    FileDescriptor file = opened(path, flags);
    if (file.isOpen() && (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))) {
        file = FileDescriptor();
        errno = EINVAL;
    }
    return file;
}

bool isFlushed(int descriptor)
{
    return uninterrupted([&] { return ::fsync(descriptor); }) == 0;
}

bool flushPath(const std::string& path)
{
    const FileDescriptor file = opened(path, O_RDONLY);
    return file.isOpen() && isFlushed(file.get());
}

bool isRenamed(const std::string& from, const std::string& to, unsigned flags = 0)
{
    const auto rename = [&] { return ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags); };
    return uninterrupted(rename) == 0;
}

void unlinkPath(const std::string& path)
{
    (void)uninterrupted([&] { return ::unlink(path.c_str()); });
}

int lock(int descriptor)
{
    return uninterrupted([&] { return ::flock(descriptor, LOCK_EX | LOCK_NB); });
}

std::string folderOf(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

/// The kernel's clock for time stamps ticks a few hundred times a second, too slow to order quick saves.
void stampExactly(int descriptor)
{
    timespec times[2] = {{0, UTIME_OMIT}, {}};
    ::clock_gettime(CLOCK_REALTIME, &times[1]);
    ::futimens(descriptor, times);
}

bool isGone(const std::string& path)
{
    return uninterrupted([&] { return ::access(path.c_str(), F_OK); }) != 0 && errno == ENOENT;
}

bool isRegularFile(const std::string& path)
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
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

bool openRegularFile(QFile& file, const FileUrl& url)
{
    FileDescriptor opened = openedRegularFile(url.path(), O_RDONLY);
    if (!opened.isOpen() && (errno == EMFILE || errno == ENFILE || errno == ENOMEM)) {
        throw std::bad_alloc();
    }
    return opened.isOpen() &&
           file.open(opened.release(), QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
}

AtomicFile::AtomicFile(const FileUrl& target) : m_target(target.path())
{
    constexpr int mostAttempts = 3;
    for (int attempt = 0; attempt < mostAttempts && !openTemporary(); ++attempt) {
    }
    if (m_descriptor >= 0) {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }
}

/// Until the new file is locked, another program may remove it as abandoned. False in that case; the caller then makes
/// another.
bool AtomicFile::openTemporary()
{
    m_temporary = temporaryPrefix(m_target).append(randomPart).append(temporaryEnd);
    m_descriptor = TemporaryNames::shared().make(m_temporary, static_cast<int>(temporaryEnd.size()));
    if (m_descriptor < 0) {
        m_temporary.clear();
        return true;
    }
    const bool isTaken = lock(m_descriptor) != 0 && errno == EWOULDBLOCK;
    if (!isTaken && !isGone(m_temporary)) {
        return true;
    }
    discard();
    return false;
}

AtomicFile::~AtomicFile()
{
    discard();
}

bool AtomicFile::commit()
{
    const bool isOnDisk = isComplete() && isFlushed(m_descriptor);
    return finish(isOnDisk && isRenamed(m_temporary, m_target));
}

bool AtomicFile::commitUnflushed()
{
    if (isComplete() && isGone(m_target)) {
        return finish(isRenamed(m_temporary, m_target));
    }
    if (!isComplete() || !isRegularFile(m_target)) {
        return commit();
    }
    stampExactly(m_descriptor);
    TemporaryNames::shared().forget(m_temporary);
    if (!isRenamed(m_temporary, m_target, RENAME_EXCHANGE)) {
        return commit();
    }
    m_replaced = m_temporary;
    return finish(true);
}

bool AtomicFile::isComplete() const
{
    return !m_temporary.empty() && !m_hasFailed;
}

bool AtomicFile::finish(bool isInPlace)
{
    QIODevice::close();
    if (!isInPlace) {
        discard();
        return false;
    }
    TemporaryNames::shared().forget(m_temporary);
    m_temporary.clear();
    ::flock(m_descriptor, LOCK_UN);
    return true;
}

void AtomicFile::flush()
{
    if (isFlushed(m_descriptor) && flushPath(folderOf(m_target)) && !m_replaced.empty()) {
        unlinkPath(m_replaced);
        m_replaced.clear();
    }
}

std::vector<AtomicFile::Abandoned> AtomicFile::abandonedIn(const FileUrl& folder)
{
    std::vector<std::pair<std::filesystem::file_time_type, Abandoned>> found;
    for (const std::string& path : temporaryFilesIn(folder.path())) {
        auto file = std::make_shared<const FileDescriptor>(openedRegularFile(path, O_RDWR | O_NOFOLLOW));
        if (file->isOpen() && lock(file->get()) == 0) {
            std::error_code unknown;
            found.emplace_back(std::filesystem::last_write_time(path, unknown),
                               Abandoned{FileUrl::fromPath(path), std::move(file)});
        }
    }
    std::ranges::sort(found, std::ranges::greater(), [](const auto& each) { return each.first; });
    std::vector<Abandoned> files;
    files.reserve(found.size());
    for (auto& [time, file] : found) {
        files.push_back(std::move(file));
    }
    return files;
}

void AtomicFile::flush(const FileUrl& target, const std::vector<Abandoned>& abandoned)
{
    const std::string path = target.path();
    if (isRegularFile(path) && !(flushPath(path) && flushPath(folderOf(path)))) {
        return;
    }
    for (const Abandoned& file : abandoned) {
        unlinkPath(file.url.path());
    }
}

void AtomicFile::remove(const FileUrl& target)
{
    const std::string path = target.path();
    const std::string prefix = temporaryPrefix(path) + randomPart.front();
    for (const std::string& temporary : temporaryFilesIn(folderOf(path))) {
        if (temporary.starts_with(prefix)) {
            unlinkPath(temporary);
        }
    }
    removeItem(target);
}

void AtomicFile::discard()
{
    if (!m_temporary.empty()) {
        unlinkPath(m_temporary);
        TemporaryNames::shared().forget(m_temporary);
        m_temporary.clear();
    }
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

qint64 AtomicFile::readData(char* /*data*/, qint64 /*maxSize*/)
{
    return -1;
}

qint64 AtomicFile::writeData(const char* data, qint64 size)
{
    m_hasFailed = m_hasFailed || isGone(m_temporary);
    for (qint64 done = 0; done < size && !m_hasFailed;) {
        const ssize_t written = ::write(m_descriptor, data + done, static_cast<std::size_t>(size - done));
        if (written > 0) {
            done += written;
        } else if (written == 0 || errno != EINTR) {
            m_hasFailed = true;
        }
    }
    return m_hasFailed ? -1 : size;
}

} // namespace morlaine
