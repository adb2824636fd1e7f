#include "Platform/PrivateFiles.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morlaine {

namespace {

/// Makes a change of names in the folder last. Where a file system cannot do that, there is nothing better to do.
void syncFolder(const std::string& path)
{
    const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
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

AtomicFile::AtomicFile(const FileUrl& target) : m_target(target.path()), m_temporary(m_target + ".XXXXXX")
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
    syncFolder(m_target.substr(0, m_target.rfind('/')));
    return true;
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
