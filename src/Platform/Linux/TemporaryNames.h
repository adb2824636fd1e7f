#pragma once

#include <mutex>
#include <set>
#include <string>

namespace morlaine {

/// The temporary files that this program is writing. They are removed when a signal ends it. Any thread.
class TemporaryNames {
public:
    /// Never destroyed: threads outlive `main`.
    [[nodiscard]] static TemporaryNames& shared();

    /// Makes a file for reading and writing. `path` is a pattern (see mkostemps) and becomes the file's path. Returns
    /// the descriptor, or a negative number on failure.
    [[nodiscard]] int make(std::string& path, int suffixLength);

    void forget(const std::string& path);

    /// Removes the files and blocks the creation of others. The caller must end the program.
    void removeForGood();

private:
    std::mutex m_mutex;
    std::set<std::string> m_paths;
};

} // namespace morlaine
