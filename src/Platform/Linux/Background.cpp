#include "Platform/Background.h"

#include "Platform/Memory.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <new>
#include <thread>

#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace morlaine {

namespace {

/// The names of the running work.
class Registry {
public:
    /// Never destroyed: threads outlive static objects at exit.
    static Registry& shared()
    {
        static auto* const registry = new Registry;
        return *registry;
    }

    [[nodiscard]] std::uint64_t add(const std::string& name)
    {
        const std::lock_guard lock(m_mutex);
        m_running.emplace(++m_lastId, name);
        return m_lastId;
    }

    void remove(std::uint64_t id)
    {
        const std::lock_guard lock(m_mutex);
        m_running.erase(id);
        m_changed.notify_all();
    }

    [[nodiscard]] std::vector<std::string> waitUntilEmpty(std::chrono::milliseconds bound)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, bound, [this] { return m_running.empty(); });
        std::vector<std::string> names;
        for (const auto& [id, name] : std::exchange(m_running, {})) {
            names.push_back(name);
        }
        return names;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::map<std::uint64_t, std::string> m_running;
    std::uint64_t m_lastId = 0;
};

void nameThisThread(const std::string& name)
{
    constexpr std::size_t longest = 15;
    ::pthread_setname_np(::pthread_self(), name.substr(0, longest).c_str());
}

/// Both calls affect the calling thread only, not the process.
void yieldToEverythingElse()
{
    constexpr int lowest = 19;
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), lowest);
    constexpr int ofProcess = 1;
    constexpr int lowestOfBestEffort = 2 << 13 | 7; // the idle class would starve next to a scan
    ::syscall(SYS_ioprio_set, ofProcess, 0, lowestOfBestEffort);
}

/// Moves the calling thread if it runs on that processor. The system starts a thread on its creator's processor if all
/// others have work, even of the lowest priority, and takes some ten milliseconds to move one of the two.
void leaveProcessor(int processor)
{
    cpu_set_t allowed;
    if (processor < 0 || ::sched_getcpu() != processor || ::sched_getaffinity(0, sizeof allowed, &allowed) != 0) {
        return;
    }
    cpu_set_t others = allowed;
    CPU_CLR(static_cast<std::size_t>(processor), &others);
    if (::sched_setaffinity(0, sizeof others, &others) == 0) {
        ::sched_setaffinity(0, sizeof allowed, &allowed); // from here on, the system decides
    }
}

void run(const std::function<void()>& work) noexcept
{
    try {
        work();
    } catch (...) { // ends the work
    }
}

} // namespace

std::error_code Background::start(const std::string& name, Priority priority, std::function<void()> work)
{
    Registry& registry = Registry::shared();
    std::uint64_t id = 0;
    try {
        id = registry.add(name);
        const int processor = ::sched_getcpu();
        std::thread([name, priority, processor, work = std::move(work), id, &registry]() mutable {
            nameThisThread(name);
            if (priority == Priority::background) {
                yieldToEverythingElse();
            } else if (priority == Priority::helping) {
                leaveProcessor(processor);
            }
            run(work);
            work = nullptr; // before it counts as ended
            giveBackFreedMemory();
            registry.remove(id);
        }).detach();
    } catch (const std::system_error& error) {
        registry.remove(id);
        return error.code();
    } catch (const std::bad_alloc&) {
        registry.remove(id);
        return std::make_error_code(std::errc::not_enough_memory);
    }
    return {};
}

void Background::startHelpers(const std::string& name, std::size_t most, const std::function<void()>& help)
{
    constexpr std::size_t worthTheirThreads = 3;
    const std::size_t processors = std::max(std::thread::hardware_concurrency(), 1U);
    for (std::size_t helpers = std::min({most, processors - 1, worthTheirThreads}); helpers > 0; --helpers) {
        (void)start(name, Priority::helping, help);
    }
}

std::vector<std::string> Background::waitForAll(std::chrono::milliseconds bound)
{
    return Registry::shared().waitUntilEmpty(bound);
}

} // namespace morlaine
