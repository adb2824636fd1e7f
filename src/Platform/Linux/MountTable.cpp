#include "Platform/Linux/MountTable.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <span>
#include <unordered_map>

#include <libmount/libmount.h>
#include <sys/types.h>

namespace morlaine {

namespace {

using TablePointer = std::unique_ptr<libmnt_table, decltype(&mnt_unref_table)>;

struct Entry {
    int id;
    int parent;
    dev_t device;
    std::string_view mountPoint;
    std::string_view type;
    std::string_view source;
};

/// Kernel and memory file systems, automount triggers, and images of installed packages. libmount's own list of pseudo
/// file systems also contains some that people call volumes: fuse, overlay, virtiofs, vboxsf.
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
/// The root file system of a container; elsewhere these are mounts of the containers themselves.
constexpr std::array<std::string_view, 3> layeredTypes = {"aufs", "fuse.fuse-overlayfs", "overlay"};

/// Includes /etc because containers have single files mounted there.
constexpr std::array<std::string_view, 7> systemFolders = {"/boot", "/dev", "/efi", "/etc", "/proc", "/run", "/sys"};

std::string_view textOf(const char* text)
{
    return text == nullptr ? std::string_view() : text;
}

bool contains(std::span<const std::string_view> names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Whether `path` is `folder` or lies inside it.
bool isWithin(std::string_view path, std::string_view folder)
{
    return folder == "/" || (path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/'));
}

/// The views in the result point into `table`.
std::vector<Entry> entriesOf(libmnt_table& table)
{
    std::vector<Entry> entries;
    const std::unique_ptr<libmnt_iter, decltype(&mnt_free_iter)> iterator(mnt_new_iter(MNT_ITER_FORWARD),
                                                                          &mnt_free_iter);
    for (libmnt_fs* fs = nullptr; iterator && mnt_table_next_fs(&table, iterator.get(), &fs) == 0;) {
        const Entry entry{mnt_fs_get_id(fs),
                          mnt_fs_get_parent_id(fs),
                          mnt_fs_get_devno(fs),
                          textOf(mnt_fs_get_target(fs)),
                          textOf(mnt_fs_get_fstype(fs)),
                          textOf(mnt_fs_get_source(fs))};
        if (entry.mountPoint.starts_with('/')) {
            entries.push_back(entry);
        }
    }
    return entries;
}

/// Null if memory runs out. libmount only parses the text: it does not touch the mounts themselves, which may hang.
TablePointer parsed(std::string_view mountInfo)
{
    std::string text(mountInfo);
    const std::unique_ptr<std::FILE, decltype([](std::FILE* file) { std::fclose(file); })> file(
        ::fmemopen(text.data(), text.size(), "r"));
    TablePointer table(mnt_new_table(), &mnt_unref_table);
    const bool isParsed = file && table && mnt_table_parse_stream(table.get(), file.get(), "mountinfo") == 0;
    return isParsed ? std::move(table) : TablePointer(nullptr, &mnt_unref_table);
}

/// How mounts are stacked: each is mounted on another one, at its mount point or somewhere inside it.
class Stack {
public:
    explicit Stack(const std::vector<Entry>& entries)
    {
        for (const Entry& entry : entries) {
            m_byId.try_emplace(entry.id, &entry);
            m_onTop[entry.parent].push_back(&entry);
        }
    }

    /// Whether another mount covers this one, or a folder on the way to it.
    [[nodiscard]] bool isHidden(const Entry& entry) const
    {
        const auto takesItsPlace = [&entry](const Entry* other) {
            return other != &entry && other->mountPoint == entry.mountPoint;
        };
        return std::ranges::any_of(onTopOf(entry.id), takesItsPlace) || isOutOfReach(entry);
    }

private:
    [[nodiscard]] std::span<const Entry* const> onTopOf(int id) const
    {
        const auto found = m_onTop.find(id);
        return found == m_onTop.end() ? std::span<const Entry* const>() : found->second;
    }

    [[nodiscard]] static bool isCutOff(const Entry& entry, const Entry& sibling)
    {
        return sibling.mountPoint == entry.mountPoint ? &sibling > &entry
                                                      : isWithin(entry.mountPoint, sibling.mountPoint);
    }

    /// A mount on the same parent at the same place or above is newer: otherwise this one would be mounted on it.
    [[nodiscard]] bool isOutOfReach(const Entry& mount) const
    {
        const Entry* entry = &mount;
        // No chain is longer than the table, unless the table is broken. The first mount is its own parent.
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

    std::unordered_map<int, const Entry*> m_byId;
    std::unordered_map<int, std::vector<const Entry*>> m_onTop;
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

/// Whether asking for a path here may have to wait for more than this machine's kernel and disks.
bool mayHang(const Entry& entry)
{
    const bool isOnDisk = entry.source.starts_with("/dev/") && !entry.type.starts_with("fuse");
    const bool isInMemory = contains(systemTypes, entry.type) || entry.type == "overlay";
    return entry.type == "autofs" || !(isOnDisk || isInMemory);
}

} // namespace

std::vector<Mount> mountsForPeople(std::string_view mountInfo)
{
    const TablePointer table = parsed(mountInfo);
    const std::vector<Entry> entries = table ? entriesOf(*table) : std::vector<Entry>();
    const Stack stack(entries);
    std::vector<const Entry*> slow;
    std::unordered_map<dev_t, const Entry*> chosen;
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
            mounts.push_back({std::string(entry.mountPoint), std::string(entry.source), !isSlow});
        }
    }
    return mounts;
}

} // namespace morlaine
