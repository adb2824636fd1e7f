// Preloaded into the program under test, this library simulates a disk that does not answer: listing a folder named
// "hung" blocks until an item named "released" exists beside it.

#include <array>
#include <chrono>
#include <climits>
#include <string>
#include <thread>

#include <dirent.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds interval{5};

std::string pathOf(int folder)
{
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(folder);
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

} // namespace

// The system's header has reserved names. NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" ssize_t getdents64(int folder, void* buffer, size_t size)
{
    const std::string path = pathOf(folder);
    if (path.ends_with("/hung")) {
        const std::string released = path.substr(0, path.rfind('/')) + "/released";
        while (::access(released.c_str(), F_OK) != 0) {
            std::this_thread::sleep_for(interval);
        }
    }
    return ::syscall(SYS_getdents64, folder, buffer, size);
}
