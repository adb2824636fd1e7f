#include "Platform/Linux/LinuxFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace morlaine {

namespace {

constexpr std::size_t mostOpenFolders = 16;
constexpr std::size_t listingBufferSize = std::size_t{128} * 1024;
constexpr int openFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// Without crossing the border of a mount and without following links, by the kernel's own means.
FileDescriptor openByOpenat2(int folder, const char* name)
{
    open_how how = {};
    how.flags = openFlags;
    how.resolve = RESOLVE_NO_XDEV | RESOLVE_NO_SYMLINKS;
    return FileDescriptor(static_cast<int>(::syscall(SYS_openat2, folder, name, &how, sizeof how)));
}

/// The same for kernels that have no such means: what is mounted in the same file system goes unnoticed.
FileDescriptor openOnSameDevice(int folder, const char* name)
{
    FileDescriptor opened(::openat(folder, name, openFlags));
    if (opened.isOpen() && volumeOf(opened.get()) != volumeOf(folder)) {
        opened = FileDescriptor();
        errno = EXDEV;
    }
    return opened;
}

bool isDotOrDotDot(const char* name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

} // namespace

LinuxFolder::LinuxFolder(std::string path)
    : m_parent(nullptr)
    , m_name(std::move(path))
    , m_state(std::make_shared<WalkState>())
{
    m_state->listingBuffer.resize(listingBufferSize);
}

LinuxFolder::LinuxFolder(LinuxFolder& parent, std::string_view name)
    : m_parent(&parent)
    , m_name(name)
    , m_state(parent.m_state)
{
}

LinuxFolder::~LinuxFolder()
{
    if (m_descriptor.isOpen()) {
        reopenParent();
        std::erase(m_state->openFolders, this);
    }
}

std::unique_ptr<Folder> LinuxFolder::folder(std::string_view name)
{
    return std::make_unique<LinuxFolder>(*this, name);
}

bool LinuxFolder::open()
{
    std::vector<LinuxFolder*> closed;
    for (LinuxFolder* folder = this; folder != nullptr && !folder->m_descriptor.isOpen(); folder = folder->m_parent) {
        closed.push_back(folder);
    }
    for (; !closed.empty(); closed.pop_back()) {
        LinuxFolder& folder = *closed.back();
        FileDescriptor descriptor = folder.openFromParent();
        const bool isSameAsBefore = !folder.m_identity || identityOf(descriptor) == folder.m_identity;
        if (!descriptor.isOpen() || !isSameAsBefore) {
            return false;
        }
        if (folder.m_parent == nullptr && !folder.m_identity) {
            m_state->volume = walkedVolume(descriptor.get());
        }
        folder.keep(std::move(descriptor));
    }
    return true;
}

/// When descriptors run out, those of the walk itself are the ones to give up, down to the one that is needed here.
FileDescriptor LinuxFolder::openFromParent()
{
    for (;;) {
        FileDescriptor opened = tryToOpenFromParent();
        const bool needsDescriptors = !opened.isOpen() && (errno == EMFILE || errno == ENFILE);
        if (!needsDescriptors || m_state->openFolders.size() <= 1) {
            return opened;
        }
        setOutermostAside();
    }
}

FileDescriptor LinuxFolder::tryToOpenFromParent()
{
    if (m_parent != nullptr) {
        return openWithin(m_parent->m_descriptor, m_name.c_str());
    }
    const std::optional<PathStart> start = startOfPath(m_name);
    return start ? FileDescriptor(::openat(start->anchor(), std::string(start->rest).c_str(), openFlags))
                 : FileDescriptor();
}

FileDescriptor LinuxFolder::openWithin(const FileDescriptor& folder, const char* name)
{
    if (m_state->hasOpenat2) {
        FileDescriptor opened = openByOpenat2(folder.get(), name);
        if (opened.isOpen() || (errno != ENOSYS && errno != EPERM)) {
            return opened;
        }
        m_state->hasOpenat2 = false;
    }
    return openOnSameDevice(folder.get(), name);
}

void LinuxFolder::keep(FileDescriptor descriptor)
{
    m_descriptor = std::move(descriptor);
    m_state->openFolders.push_back(this);
    if (m_state->openFolders.size() > mostOpenFolders) {
        setOutermostAside();
    }
}

void LinuxFolder::setOutermostAside()
{
    m_state->openFolders.front()->setAside();
    m_state->openFolders.pop_front();
}

void LinuxFolder::setAside()
{
    m_identity = identityOf(m_descriptor);
    m_descriptor = FileDescriptor();
}

/// Saves the way back from the start of a very deep walk. A folder that was moved meanwhile has another parent.
void LinuxFolder::reopenParent()
{
    if (m_parent == nullptr || m_parent->m_descriptor.isOpen() || !m_parent->m_identity) {
        return;
    }
    FileDescriptor above = openWithin(m_descriptor, "..");
    if (above.isOpen() && identityOf(above) == m_parent->m_identity) {
        m_parent->m_descriptor = std::move(above);
        m_state->openFolders.push_front(m_parent);
    }
}

std::optional<LinuxFolder::Identity> LinuxFolder::identityOf(const FileDescriptor& descriptor)
{
    struct stat status;
    if (::fstat(descriptor.get(), &status) != 0) {
        return std::nullopt;
    }
    return Identity{status.st_dev, status.st_ino};
}

bool LinuxFolder::list(FolderContents& contents, const std::stop_token& stop)
{
    if (!open()) {
        return false;
    }
    std::vector<char>& buffer = m_state->listingBuffer;
    for (;;) {
        const ssize_t length = ::getdents64(m_descriptor.get(), buffer.data(), buffer.size());
        if (length <= 0) {
            return length == 0;
        }
        const char* const end = buffer.data() + length;
        for (const char* next = buffer.data(); next != end;) {
            if (stop.stop_requested()) {
                return false;
            }
            const auto* entry = reinterpret_cast<const dirent64*>(next);
            next += entry->d_reclen;
            if (!isDotOrDotDot(entry->d_name)) {
                contents.append(entry->d_name, measure(m_descriptor.get(), entry->d_name, m_state->volume));
            }
        }
    }
}

} // namespace morlaine
