#include "Support/TemporaryFolder.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morlaine::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = fs::temp_directory_path() / "morlaine-test-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), pattern);
    }
    m_path = fs::canonical(pattern);
}

TemporaryFolder::~TemporaryFolder()
{
    // These tools handle any depth and any permissions. Other threads may still write here.
    const std::string path = '\'' + m_path.native() + '\'';
    const std::string command = "chmod -R u+rwX " + path + " 2>/dev/null; rm -rf " + path + " 2>/dev/null";
    for (int attempt = 0; attempt < 20 && std::system(command.c_str()) != 0; ++attempt) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

FileUrl TemporaryFolder::url(std::string_view relative) const
{
    return FileUrl::fromPath(relative.empty() ? m_path.native() : m_path.native() + '/' + std::string(relative));
}

void TemporaryFolder::makeFolder(const fs::path& relative) const
{
    fs::create_directories(m_path / relative);
}

void TemporaryFolder::makeFile(const fs::path& relative, std::size_t length) const
{
    makeFolder(relative.parent_path());
    std::ofstream(m_path / relative, std::ios::binary) << std::string(length, 'x');
}

void TemporaryFolder::makeSparseFile(const fs::path& relative, std::uintmax_t length) const
{
    makeFile(relative, 5'000);
    fs::resize_file(m_path / relative, length);
}

void TemporaryFolder::makeLink(const fs::path& relative, const fs::path& target) const
{
    makeFolder(relative.parent_path());
    fs::create_symlink(target, m_path / relative);
}

void TemporaryFolder::makeDeepFolders(const std::string& name, int depth, int filesPerLevel) const
{
    int folder = ::open(m_path.c_str(), O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; folder >= 0; ++level) {
        for (int i = 0; i < filesPerLevel; ++i) {
            const int file = ::openat(folder, ("f" + std::to_string(i)).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
            [[maybe_unused]] const auto written = ::write(file, "x", 1);
            ::close(file);
        }
        int inner = -1;
        if (level < depth) {
            ::mkdirat(folder, name.c_str(), 0700);
            inner = ::openat(folder, name.c_str(), O_DIRECTORY | O_CLOEXEC);
        }
        ::close(folder);
        folder = inner;
    }
}

} // namespace morlaine::test
