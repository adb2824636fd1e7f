#pragma once

#include "Utilities/FileUrl.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace morlaine::test {

/// A folder on disk that is deleted with this object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }
    [[nodiscard]] FileUrl url(std::string_view relative = {}) const;

    /// Paths are relative to the folder; parent folders are made.
    void makeFolder(const std::filesystem::path& relative) const;
    void makeFile(const std::filesystem::path& relative, std::size_t length) const;
    /// Has some content at its beginning.
    void makeSparseFile(const std::filesystem::path& relative, std::uintmax_t length) const;
    void makeLink(const std::filesystem::path& relative, const std::filesystem::path& target) const;

    /// Nested folders of that name, `depth` deep; the paths of the innermost ones can be too long for a system call.
    /// Each level, including the folder itself, gets `filesPerLevel` files of one byte.
    void makeDeepFolders(const std::string& name, int depth, int filesPerLevel) const;

private:
    std::filesystem::path m_path;
};

} // namespace morlaine::test
