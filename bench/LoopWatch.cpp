// Preloaded into the program, this library records how long the main thread is away from its event loop, and when the
// last file was measured. It writes to the file named by MORLAINE_LOOP_WATCH, in the layout of `Watch`, which
// loop_watch.py reads.

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::int64_t shortest = 100'000; // nanoseconds; shorter absences are not recorded

struct Absence {
    std::int64_t from;
    std::int64_t to;
};

/// Times are in nanoseconds of the monotonic clock.
struct Watch {
    std::atomic<std::int64_t> awaySince; // 0 while the main thread waits in its event loop
    std::atomic<std::int64_t> lastMeasured;
    std::atomic<std::int64_t> count; // of all absences, including those that were not stored for lack of room
    std::array<Absence, 65'536> absences;
};

Watch* watch = nullptr;
thread_local bool isMainThread = false;

std::int64_t now()
{
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * std::int64_t{1'000'000'000} + time.tv_nsec;
}

__attribute__((constructor)) void openWatch()
{
    const char* const path = std::getenv("MORLAINE_LOOP_WATCH");
    const int descriptor = path ? ::open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0600) : -1;
    if (descriptor < 0 || ::ftruncate(descriptor, sizeof(Watch)) != 0) {
        return;
    }
    void* const place = ::mmap(nullptr, sizeof(Watch), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    ::close(descriptor);
    if (place == MAP_FAILED) {
        return;
    }
    watch = static_cast<Watch*>(place);
    isMainThread = true;
    // The process may have recorded something before it executed this program.
    watch->count = 0;
    watch->lastMeasured = 0;
    watch->awaySince = now();
}

/// Whether the caller is an event loop. Other functions wait as well, for an answer of the X server for example.
bool isEventLoop(const void* caller)
{
    static const void* known = nullptr;
    if (caller == known) {
        return true;
    }
    Dl_info info{};
    if (::dladdr(caller, &info) == 0 || info.dli_fname == nullptr ||
        (std::strstr(info.dli_fname, "libglib-") == nullptr && std::strstr(info.dli_fname, "libQt6Core") == nullptr)) {
        return false;
    }
    known = caller;
    return true;
}

void enterLoop()
{
    const std::int64_t to = now();
    const std::int64_t from = watch->awaySince;
    if (to - from >= shortest) {
        const std::int64_t position = watch->count;
        if (position < static_cast<std::int64_t>(watch->absences.size())) {
            watch->absences[static_cast<std::size_t>(position)] = {from, to};
        }
        watch->count = position + 1;
    }
    watch->awaySince = 0;
}

/// Calls a waiting function, and records the time between two waits of the event loop.
template <typename Wait>
int waitFrom(const void* caller, Wait wait)
{
    if (!isMainThread || !isEventLoop(caller)) {
        return wait();
    }
    enterLoop();
    const int result = wait();
    const int failure = errno;
    watch->awaySince = now();
    errno = failure;
    return result;
}

template <typename Function>
Function original(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// The system's headers have reserved names. NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

extern "C" int poll(pollfd* descriptors, nfds_t count, int timeout)
{
    static const auto function = original<decltype(&::poll)>("poll");
    return waitFrom(__builtin_return_address(0), [=] { return function(descriptors, count, timeout); });
}

extern "C" int ppoll(pollfd* descriptors, nfds_t count, const timespec* timeout, const sigset_t* mask)
{
    static const auto function = original<decltype(&::ppoll)>("ppoll");
    return waitFrom(__builtin_return_address(0), [=] { return function(descriptors, count, timeout, mask); });
}

extern "C" int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status)
{
    static const auto function = original<decltype(&::statx)>("statx");
    const int result = function(folder, path, flags, mask, status);
    // Only a scan uses a folder's descriptor here.
    if (watch != nullptr && folder != AT_FDCWD && (flags & AT_SYMLINK_NOFOLLOW) != 0) {
        watch->lastMeasured = now();
    }
    return result;
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
