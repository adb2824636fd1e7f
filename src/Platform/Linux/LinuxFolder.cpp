#include "Platform/Linux/LinuxFolder.h"

#include "Platform/Memory.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace morlaine {

namespace {

constexpr std::size_t mostOpenFolders = 16;
constexpr std::size_t listingBufferSize = std::size_t{32} * 1024;
constexpr std::size_t listedBetweenLooksAtMemory = std::size_t{1} << 20U; // bytes
constexpr int openFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// The kernel refuses to cross a mount point or to follow a link.
FileDescriptor openByOpenat2(int folder, const char* name)
{
    open_how how = {};
    how.flags = openFlags;
    how.resolve = RESOLVE_NO_XDEV | RESOLVE_NO_SYMLINKS;
    return FileDescriptor(static_cast<int>(::syscall(SYS_openat2, folder, name, &how, sizeof how)));
}

/// For kernels without openat2. Does not notice a mount of the same file system.
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
    , m_ownState(std::make_unique<WalkState>())
    , m_state(*m_ownState)
{
}

LinuxFolder::LinuxFolder(LinuxFolder& parent, std::string_view name)
    : m_parent(&parent)
    , m_name(name)
    , m_state(parent.m_state)
{
}

LinuxFolder::~LinuxFolder()
{
    if (!m_wasKept) {
        return;
    }
    Handle last;
    {
        const std::lock_guard lock(m_state.mutex);
        if (m_descriptor != nullptr) {
            last = std::move(m_descriptor);
            std::erase(m_state.openFolders, this);
        }
    }
    if (last != nullptr) {
        reopenParent(*last);
    }
}

std::unique_ptr<Folder> LinuxFolder::folder(std::string_view name)
{
    return std::make_unique<LinuxFolder>(*this, name);
}

/// Null if the folder cannot be opened, or if another one has taken its place; `failure` is then the errno.
LinuxFolder::Handle LinuxFolder::open(int& failure)
{
    std::vector<LinuxFolder*> closed;
    Handle handle = openOrAbove(closed);
    for (; !closed.empty(); closed.pop_back()) {
        LinuxFolder& folder = *closed.back();
        FileDescriptor descriptor = folder.openFrom(handle);
        failure = descriptor.isOpen() ? 0 : errno;
        handle = descriptor.isOpen() ? folder.keep(std::move(descriptor)) : nullptr;
        if (handle == nullptr) {
            return nullptr;
        }
    }
    return handle;
}

FileDescriptor LinuxFolder::openForListing()
{
    int failure = 0;
    FileDescriptor descriptor;
    const Handle above = m_parent == nullptr ? nullptr : m_parent->open(failure);
    if (above != nullptr || m_parent == nullptr) {
        descriptor = openFrom(above);
        failure = descriptor.isOpen() ? 0 : errno;
    }
    m_lackedDescriptors = failure == EMFILE || failure == ENFILE;
    return descriptor;
}

/// The nearest open folder on the way up, or null; `closed` gets the closed ones below it, innermost first.
LinuxFolder::Handle LinuxFolder::openOrAbove(std::vector<LinuxFolder*>& closed)
{
    const std::lock_guard lock(m_state.mutex);
    for (LinuxFolder* folder = this; folder != nullptr; folder = folder->m_parent) {
        if (folder->m_descriptor != nullptr) {
            std::erase(m_state.openFolders, folder);
            m_state.openFolders.push_back(folder);
            return folder->m_descriptor;
        }
        closed.push_back(folder);
    }
    return nullptr;
}

/// If descriptors run out, closes other folders of this walk and tries again.
FileDescriptor LinuxFolder::openFrom(const Handle& above)
{
    for (;;) {
        FileDescriptor opened = tryToOpenFrom(above);
        const int failure = opened.isOpen() ? 0 : errno;
        const bool needsDescriptors = failure == EMFILE || failure == ENFILE;
        if (needsDescriptors && setOneAside()) {
            continue;
        }
        if (m_parent == nullptr && opened.isOpen() && !m_state.volume) {
            m_state.volume = walkedVolume(opened.get());
        }
        errno = failure;
        return opened;
    }
}

FileDescriptor LinuxFolder::tryToOpenFrom(const Handle& above)
{
    if (above != nullptr) {
        return openWithin(*above, m_name.c_str());
    }
    const std::optional<PathStart> start = startOfPath(m_name);
    return start ? FileDescriptor(::openat(start->anchor(), std::string(start->rest).c_str(), openFlags))
                 : FileDescriptor();
}

FileDescriptor LinuxFolder::openWithin(const FileDescriptor& folder, const char* name)
{
    if (m_state.hasOpenat2) {
        FileDescriptor opened = openByOpenat2(folder.get(), name);
        if (opened.isOpen() || (errno != ENOSYS && errno != EPERM)) {
            return opened;
        }
        m_state.hasOpenat2 = false;
    }
    return openOnSameDevice(folder.get(), name);
}

/// Null if it is not the folder that was closed before. Another thread may have reopened the folder meanwhile.
LinuxFolder::Handle LinuxFolder::keep(FileDescriptor descriptor)
{
    const std::lock_guard lock(m_state.mutex);
    if (m_descriptor != nullptr) {
        return m_descriptor;
    }
    if (m_identity && identityOf(descriptor) != m_identity) {
        return nullptr;
    }
    m_wasKept = true;
    m_isSetAside = false;
    m_descriptor = std::make_shared<const FileDescriptor>(std::move(descriptor));
    Handle handle = m_descriptor;
    m_state.openFolders.push_back(this);
    if (m_state.openFolders.size() > mostOpenFolders) {
        m_state.openFolders.front()->setAside();
    }
    return handle;
}

bool LinuxFolder::setOneAside()
{
    const std::lock_guard lock(m_state.mutex);
    if (m_state.openFolders.empty()) {
        return false;
    }
    m_state.openFolders.front()->setAside();
    return true;
}

/// Closes the least recently used folder. Requires `this` to be that one.
void LinuxFolder::setAside()
{
    m_isSetAside = true;
    m_identity = identityOf(*m_descriptor);
    m_descriptor.reset();
    m_state.openFolders.pop_front();
}

/// Avoids reopening a very deep path from its top. If the folder was moved meanwhile, ".." is another folder, which
/// `keep` refuses.
void LinuxFolder::reopenParent(const FileDescriptor& from)
{
    if (m_parent == nullptr || !m_parent->m_isSetAside) {
        return;
    }
    if (FileDescriptor above = openWithin(from, ".."); above.isOpen()) {
        (void)m_parent->keep(std::move(above));
    }
}

/// Does not ask a file server, so that it never blocks.
std::optional<LinuxFolder::Identity> LinuxFolder::identityOf(const FileDescriptor& descriptor)
{
    struct statx status;
    constexpr int flags = AT_EMPTY_PATH | AT_STATX_DONT_SYNC;
    if (::statx(descriptor.get(), "", flags, STATX_INO, &status) != 0) {
        return std::nullopt;
    }
    return Identity{makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino};
}

bool LinuxFolder::list(FolderContents& contents, const std::stop_token& stop, const ListingPace& pace)
{
    FileDescriptor descriptor = openForListing();
    if (!descriptor.isOpen()) {
        return false;
    }
    bool holdsFolders = false;
    const bool isListed = listOpened(descriptor.get(), contents, stop, pace, holdsFolders);
    if (isListed && holdsFolders) {
        (void)keep(std::move(descriptor));
    } else {
        reopenParent(descriptor);
    }
    return isListed;
}

bool LinuxFolder::listOpened(int descriptor, FolderContents& contents, const std::stop_token& stop,
                             const ListingPace& pace, bool& holdsFolders) const
{
    alignas(dirent64) std::array<char, listingBufferSize> buffer;
    std::size_t nextLook = listedBetweenLooksAtMemory;
    for (;;) {
        const ssize_t length = ::getdents64(descriptor, buffer.data(), buffer.size());
        if (length <= 0) {
            return length == 0;
        }
        if (contents.size() > 0 && pace && !pace(contents)) {
            return false;
        }
        if (contents.bytes() > nextLook) {
            requireSpareMemory();
            nextLook += listedBetweenLooksAtMemory;
        }
        const char* const end = buffer.data() + length;
        for (const char* next = buffer.data(); next != end;) {
            if (stop.stop_requested()) {
                return false;
            }
            const auto* entry = reinterpret_cast<const dirent64*>(next);
            next += entry->d_reclen;
            if (!isDotOrDotDot(entry->d_name)) {
                const auto values = measure(descriptor, entry->d_name, *m_state.volume);
                holdsFolders = holdsFolders || (values && values->isDirectory.value_or(false));
                contents.append(entry->d_name, values);
            }
        }
    }
}

} // namespace morlaine
