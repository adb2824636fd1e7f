#include "Platform/Linux/Measure.h"

#include <algorithm>
#include <array>
#include <climits>
#include <limits>
#include <string>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

namespace morlaine {

namespace {

constexpr int statxFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
constexpr unsigned statxMask = STATX_TYPE | STATX_SIZE | STATX_BLOCKS;
constexpr std::uint64_t blockSize = 512;
constexpr std::uint64_t largestSize = std::numeric_limits<std::int64_t>::max();

/// Lower-case extensions of folders that are shown as one item.
constexpr std::array<std::string_view, 9> packageExtensions{"app",      "appex",       "bundle", "kext", "plugin",
                                                            "prefpane", "qlgenerator", "saver",  "xpc"};

bool hasPackageExtension(std::string_view path)
{
    const std::string_view extension = FileUrl::pathExtension(path.substr(path.rfind('/') + 1));
    const auto equalsIgnoringCase = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
    return std::ranges::any_of(packageExtensions, [&](std::string_view candidate) {
        return std::ranges::equal(extension, candidate, equalsIgnoringCase);
    });
}

/// Checks `Contents` itself first: a link there could lead anywhere.
bool holdsBundleInformation(int folder, const char* name)
{
    struct statx status;
    const std::string contents = std::string(name) + "/Contents";
    const std::string information = contents + "/Info.plist";
    return ::statx(folder, contents.c_str(), statxFlags, STATX_TYPE, &status) == 0 && S_ISDIR(status.stx_mode) &&
           ::statx(folder, information.c_str(), statxFlags, STATX_TYPE, &status) == 0;
}

/// Saturates: a file system may report more than a size can hold.
std::uint64_t product(std::uint64_t count, std::uint64_t unit, std::uint64_t most)
{
    return unit != 0 && count > most / unit ? most : count * unit;
}

std::uint64_t deviceOf(const struct statx& status)
{
    return makedev(status.stx_dev_major, status.stx_dev_minor);
}

/// For kernels that do not mark mount points: whether a folder is on another device than its parent.
bool isOnOtherDeviceThanParent(int folder, const char* name, const struct statx& status)
{
    struct statx parent;
    const std::string path = std::string(name) + "/..";
    return ::statx(folder, path.c_str(), statxFlags, STATX_TYPE, &parent) == 0 && deviceOf(parent) != deviceOf(status);
}

} // namespace

std::optional<ResourceValues> measure(int folder, const char* name, const WalkedVolume& volume)
{
    struct statx status;
    if (::statx(folder, name, statxFlags, statxMask, &status) != 0) {
        return std::nullopt;
    }
    const bool isDirectory = S_ISDIR(status.stx_mode);
    const bool knowsMounts = (status.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0;

    ResourceValues values;
    values.isDirectory = isDirectory;
    values.isSymbolicLink = S_ISLNK(status.stx_mode);
    const bool knowsBlocks = (status.stx_mask & STATX_BLOCKS) != 0;
    const std::uint64_t claimedBlocks = knowsBlocks ? status.stx_blocks : status.stx_size / blockSize;
    const bool isPossible = claimedBlocks <= volume.largestFile / blockSize;
    if (!isDirectory && isPossible && (status.stx_mask & STATX_SIZE) != 0) {
        values.fileSize = static_cast<std::int64_t>(product(status.stx_size, 1, largestSize));
    }
    if (knowsBlocks && isPossible) {
        values.allocatedSize = static_cast<std::int64_t>(status.stx_blocks * blockSize);
        values.totalAllocatedSize = values.allocatedSize;
    }
    values.volumeIdentifier = isDirectory || !volume.identifier ? deviceOf(status) : *volume.identifier;
    values.isVolume = knowsMounts ? (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0
                                  : isDirectory && isOnOtherDeviceThanParent(folder, name, status);
    values.isPackage =
        isDirectory && !values.isVolume && hasPackageExtension(name) && holdsBundleInformation(folder, name);
    return values;
}

std::optional<std::uint64_t> volumeOf(int descriptor)
{
    struct statx status;
    if (::statx(descriptor, "", AT_EMPTY_PATH, STATX_TYPE, &status) != 0) {
        return std::nullopt;
    }
    return deviceOf(status);
}

WalkedVolume walkedVolume(int descriptor)
{
    WalkedVolume volume{volumeOf(descriptor)};
    struct statfs status;
    if (::fstatfs(descriptor, &status) == 0 && status.f_type != OVERLAYFS_SUPER_MAGIC && status.f_blocks != 0) {
        const auto unit = static_cast<std::uint64_t>(status.f_frsize);
        volume.largestFile = product(status.f_blocks, unit, volume.largestFile);
    }
    return volume;
}

int PathStart::anchor() const noexcept
{
    return folder.isOpen() ? folder.get() : AT_FDCWD;
}

std::optional<PathStart> startOfPath(std::string_view path)
{
    PathStart start{{}, path};
    while (start.rest.size() >= PATH_MAX) {
        const std::size_t slash = start.rest.rfind('/', PATH_MAX - 2);
        if (slash == std::string_view::npos || slash == 0) {
            return std::nullopt; // a component longer than any file system supports
        }
        const std::string piece(start.rest.substr(0, slash));
        start.folder = FileDescriptor(::openat(start.anchor(), piece.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!start.folder.isOpen()) {
            return std::nullopt;
        }
        start.rest.remove_prefix(std::min(start.rest.find_first_not_of('/', slash), start.rest.size()));
    }
    return start;
}

} // namespace morlaine
