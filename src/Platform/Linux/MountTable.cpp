#include "Platform/Linux/MountTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <span>
#include <unordered_map>

namespace morlaine {

namespace {

struct Entry {
    std::string_view id;
    std::string_view parent;
    std::string_view device;
    std::string mountPoint;
    std::string type;
    std::string source;
};

/// Of the kernel, in memory, triggers of automatic mounts, and the images of installed packages.
constexpr std::array<std::string_view, 32> systemTypes = {
    "autofs",     "binder",    "binfmt_misc", "bpf",      "cgroup",     "cgroup2", "configfs",  "debugfs",
    "devpts",     "devtmpfs",  "efivarfs",    "erofs",    "functionfs", "fusectl", "hugetlbfs", "mqueue",
    "nfsd",       "nsfs",      "proc",        "pstore",   "ramfs",      "resctrl", "rootfs",    "rpc_pipefs",
    "securityfs", "selinuxfs", "smackfs",     "squashfs", "sysfs",      "tmpfs",   "tracefs",   "fuse.lxcfs",
};
constexpr std::array<std::string_view, 4> systemFuseTypes = {
    "fuse.portal",
    "fuse.gvfsd-fuse",
    "fuse.snapfuse",
    "fuse.squashfuse",
};
/// What a container sees as its whole system; elsewhere these are the containers' inner mounts.
constexpr std::array<std::string_view, 3> layeredTypes = {"aufs", "fuse.fuse-overlayfs", "overlay"};

/// /etc for the single files that containers have mounted there.
constexpr std::array<std::string_view, 7> systemFolders = {"/boot", "/dev", "/efi", "/etc", "/proc", "/run", "/sys"};

bool contains(std::span<const std::string_view> names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Whether `path` is `folder` or lies in it.
bool isWithin(std::string_view path, std::string_view folder)
{
    return folder == "/" || (path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/'));
}

std::string_view nextField(std::string_view& line)
{
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::string_view field = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    return field;
}

/// The table has blanks, line ends and backslashes as a backslash with three octal digits.
std::string unescaped(std::string_view field)
{
    std::string bytes;
    for (std::size_t i = 0; i < field.size(); ++i) {
        unsigned byte = 0;
        if (field[i] == '\\' && i + 3 < field.size() &&
            std::from_chars(&field[i + 1], &field[i + 1] + 3, byte, 8).ptr == &field[i + 1] + 3) {
            bytes += static_cast<char>(byte);
            i += 3;
        } else {
            bytes += field[i];
        }
    }
    return bytes;
}

/// `36 35 98:0 /root /mount/point options tags... - type source options`, any number of tags
std::optional<Entry> entryOfLine(std::string_view line)
{
    Entry entry;
    entry.id = nextField(line);
    entry.parent = nextField(line);
    entry.device = nextField(line);
    nextField(line);
    entry.mountPoint = unescaped(nextField(line));
    const std::size_t separator = line.find(" - ");
    if (!entry.mountPoint.starts_with('/') || separator == std::string_view::npos) {
        return std::nullopt;
    }
    line.remove_prefix(separator + 3);
    entry.type = unescaped(nextField(line));
    entry.source = unescaped(nextField(line));
    return entry;
}

std::vector<Entry> entriesOf(std::string_view text)
{
    std::vector<Entry> entries;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (std::optional<Entry> entry = entryOfLine(text.substr(0, end))) {
            entries.push_back(std::move(*entry));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return entries;
}

/// The mounts as they are stacked: each hangs on another, at its mount point or somewhere inside.
class Stack {
public:
    explicit Stack(const std::vector<Entry>& entries)
    {
        for (const Entry& entry : entries) {
            m_byId.try_emplace(entry.id, &entry);
            m_onTop[entry.parent].push_back(&entry);
        }
    }

    /// Whether another mount took the place of this one, or of something on the way to it.
    [[nodiscard]] bool isHidden(const Entry& entry) const
    {
        const auto takesItsPlace = [&entry](const Entry* other) {
            return other != &entry && other->mountPoint == entry.mountPoint;
        };
        return std::ranges::any_of(onTopOf(entry.id), takesItsPlace) || isOutOfReach(entry);
    }

private:
    [[nodiscard]] std::span<const Entry* const> onTopOf(std::string_view id) const
    {
        const auto found = m_onTop.find(id);
        return found == m_onTop.end() ? std::span<const Entry* const>() : found->second;
    }

    [[nodiscard]] static bool isCutOff(const Entry& entry, const Entry& sibling)
    {
        return sibling.mountPoint == entry.mountPoint ? &sibling > &entry
                                                      : isWithin(entry.mountPoint, sibling.mountPoint);
    }

    /// What was mounted on the same parent at the same place or above it was mounted later, or else this mount would
    /// hang on that one.
    [[nodiscard]] bool isOutOfReach(const Entry& mount) const
    {
        const Entry* entry = &mount;
        // No table is deeper than it is long, unless it is broken. The first mount of all hangs on itself.
        for (std::size_t steps = 0; steps < m_byId.size() && entry->parent != entry->id; ++steps) {
            const std::span<const Entry* const> siblings = onTopOf(entry->parent);
            if (std::ranges::any_of(siblings, [entry](const Entry* other) { return isCutOff(*entry, *other); })) {
                return true;
            }
            const auto parent = m_byId.find(entry->parent);
            if (parent == m_byId.end()) {
                return false;
            }
            entry = parent->second;
        }
        return false;
    }

    std::unordered_map<std::string_view, const Entry*> m_byId;
    std::unordered_map<std::string_view, std::vector<const Entry*>> m_onTop;
};

bool isOfSystem(const Entry& entry)
{
    const std::string_view type = entry.type;
    return contains(systemTypes, type) || contains(systemFuseTypes, type) ||
           (contains(layeredTypes, type) && entry.mountPoint != "/");
}

bool isPlaceForPeople(std::string_view mountPoint)
{
    if (mountPoint.find("/.") != std::string_view::npos) {
        return false;
    }
    return (mountPoint != "/run/media" && isWithin(mountPoint, "/run/media")) ||
           std::ranges::none_of(systemFolders, [&](std::string_view folder) { return isWithin(mountPoint, folder); });
}

/// Whether asking for a path here may have to wait for something that is not this machine's kernel or disk.
bool mayHang(const Entry& entry)
{
    const bool isOnDisk = entry.source.starts_with("/dev/") && !entry.type.starts_with("fuse");
    const bool isInMemory = contains(systemTypes, entry.type) || entry.type == "overlay";
    return entry.type == "autofs" || !(isOnDisk || isInMemory);
}

} // namespace

std::vector<Mount> mountsForPeople(std::string_view mountInfo)
{
    const std::vector<Entry> entries = entriesOf(mountInfo);
    const Stack stack(entries);
    std::vector<const Entry*> slow;
    std::unordered_map<std::string_view, const Entry*> chosen; // by device
    for (const Entry& entry : entries) {
        if (mayHang(entry)) {
            slow.push_back(&entry);
        }
        if (!isOfSystem(entry) && isPlaceForPeople(entry.mountPoint) && !stack.isHidden(entry)) {
            const Entry*& place = chosen.try_emplace(entry.device, &entry).first->second;
            place = entry.mountPoint == "/" ? &entry : place;
        }
    }

    std::vector<Mount> mounts;
    for (const Entry& entry : entries) {
        const auto found = chosen.find(entry.device);
        if (found != chosen.end() && found->second == &entry) {
            const bool isSlow = std::ranges::any_of(
                slow, [&entry](const Entry* other) { return isWithin(entry.mountPoint, other->mountPoint); });
            mounts.push_back({entry.mountPoint, entry.source, !isSlow});
        }
    }
    return mounts;
}

} // namespace morlaine
