#pragma once

#include <mutex>
#include <set>
#include <string>

namespace morlaine {

/// The temporary files that this program is writing, for removing them when a signal ends it. Any thread.
class TemporaryNames {
public:
    /// Never destroyed, since threads outlive `main`.
    [[nodiscard]] static TemporaryNames& shared();

    /// Makes a file for reading and writing after the pattern in `path` (see mkostemps), which becomes its path.
    /// Returns its descriptor, below 0 when it cannot be made.
    [[nodiscard]] int make(std::string& path, int suffixLength);

    void forget(const std::string& path);

    /// Removes the files. From then on none can be made: the caller must end the program.
    void removeForGood();

private:
    std::mutex m_mutex;
    std::set<std::string> m_paths;
};

} // namespace morlaine
