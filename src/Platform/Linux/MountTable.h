#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

/// A mount that people would call a volume.
struct Mount {
    std::string mountPoint; // exact bytes
    std::string source;     // what is mounted there: a device file, a server's share, a pool
    bool answersAtOnce;     // it lies on this machine's own disks, and so does the way to it
};

/// The mounts that people would call volumes, in the order of the table; `mountInfo` is a text in the form of
/// /proc/self/mountinfo, of which broken lines are passed over. What is mounted over, belongs to the kernel, to
/// packages, containers or the boot loader, or is hidden is left out. A file system that is mounted in several places
/// is listed once, at "/" if it is there, else where the table has it first.
[[nodiscard]] std::vector<Mount> mountsForPeople(std::string_view mountInfo);

} // namespace morlaine
