#include "Platform/BackgroundWork.h"

#include <system_error>
#include <thread>

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace morlaine {

namespace {

/// Both calls mean the calling thread, not the process.
void yieldToEverythingElse()
{
    constexpr int lowest = 19;
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), lowest);
    constexpr int ofProcess = 1;
    constexpr int lowestOfBestEffort = 2 << 13 | 7; // the idle class would starve beside a scan
    ::syscall(SYS_ioprio_set, ofProcess, 0, lowestOfBestEffort);
}

} // namespace

void runInBackground(std::function<void()> work)
{
    try {
        std::thread([work = std::move(work)] {
            yieldToEverythingElse();
            work();
        }).detach();
    } catch (const std::system_error&) {
        return;
    }
}

} // namespace morlaine
