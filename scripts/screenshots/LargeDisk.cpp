// Preloaded into the program, this library makes files appear a thousand times larger, and every disk nearly full of
// them. So the demonstration shows the disk of a real person and fits on any disk.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace {

constexpr unsigned long long factor = 1000;
constexpr unsigned long long capacity = 100'000'000'000; // bytes
constexpr unsigned long long available = 4'200'000'000;

} // namespace

// The system's headers name the parameters of these functions differently.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

extern "C" int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status)
{
    using Function = int (*)(int, const char*, int, unsigned, struct statx*);
    static const auto original = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "statx"));
    const int result = original(folder, path, flags, mask, status);
    // Only a walk uses a folder's descriptor here; others, which are about to read a file, get the true size.
    const bool isOfWalk = folder != AT_FDCWD && (flags & AT_SYMLINK_NOFOLLOW) != 0;
    if (result == 0 && isOfWalk && S_ISREG(status->stx_mode)) {
        status->stx_size *= factor;
        status->stx_blocks *= factor;
    }
    return result;
}

extern "C" int statvfs(const char* path, struct statvfs* status) noexcept
{
    using Function = int (*)(const char*, struct statvfs*);
    static const auto original = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "statvfs"));
    const int result = original(path, status);
    if (result == 0 && status->f_frsize != 0) {
        status->f_blocks = capacity / status->f_frsize;
        status->f_bfree = available / status->f_frsize;
        status->f_bavail = status->f_bfree;
    }
    return result;
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
