#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

/// A mount that is a volume to the user.
struct Mount {
    std::string mountPoint; // exact bytes
    std::string source;     // what is mounted: a device file, a server's share, a pool
    bool answersAtOnce;     // the mount and the way to it are on local disks
};

/// The mounts that are volumes to the user, in the order of the table. `mountInfo` is in the format of
/// /proc/self/mountinfo; broken lines are skipped. Leaves out mounts that are covered by others, hidden, or belong to
/// the kernel, packages, containers or the boot loader. A file system with several mounts is listed once: at "/" if it
/// is there, else at its first place in the table.
[[nodiscard]] std::vector<Mount> mountsForPeople(std::string_view mountInfo);

} // namespace morlaine
