// Loaded into the program, this makes files a thousand times larger than they are, so that a demonstration can show
// the disk of a real person and fit onto any.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr unsigned long long factor = 1000;

} // namespace

// The system's header has reserved names. NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status)
{
    using Function = int (*)(int, const char*, int, unsigned, struct statx*);
    static const auto original = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "statx"));
    const int result = original(folder, path, flags, mask, status);
    // Only a walk asks for an entry of an open folder; whoever is about to read a file gets the truth.
    const bool isOfWalk = folder != AT_FDCWD && (flags & AT_SYMLINK_NOFOLLOW) != 0;
    if (result == 0 && isOfWalk && S_ISREG(status->stx_mode)) {
        status->stx_size *= factor;
        status->stx_blocks *= factor;
    }
    return result;
}
