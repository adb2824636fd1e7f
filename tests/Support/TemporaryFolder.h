#pragma once

#include "Utilities/FileUrl.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace morlaine::test {

/// A real folder that goes with this object, whatever was put into it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }
    [[nodiscard]] FileUrl url(std::string_view relative = {}) const;

    /// Paths are relative to the folder; the folders above them are made.
    void makeFolder(const std::filesystem::path& relative) const;
    void makeFile(const std::filesystem::path& relative, std::size_t length) const;
    /// With some content at its beginning.
    void makeSparseFile(const std::filesystem::path& relative, std::uintmax_t length) const;
    void makeLink(const std::filesystem::path& relative, const std::filesystem::path& target) const;

    /// A chain of `depth` folders of that name, each in the one before. The innermost ones can have paths that are too
    /// long for any call. Each level, the folder itself included, gets `filesPerLevel` files of one byte.
    void makeDeepFolders(const std::string& name, int depth, int filesPerLevel) const;

private:
    std::filesystem::path m_path;
};

} // namespace morlaine::test
