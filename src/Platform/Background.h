#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace morlaine {

/// The threads of the program beside the main one. Each piece of work has a thread of its own, which nothing waits for:
/// the end of the program cuts it short. So work may touch only what it holds. An exception that leaves the work ends
/// it and goes no further; whoever needs to know of a failure catches it in the work. Any thread.
class Background {
public:
    enum class Priority {
        userInitiated, ///< that of the process: somebody waits for the result
        background,    ///< the lowest for processor and disk
    };

    Background() = delete;

    /// Starts `work` and returns at once. `name` tells what it does; debuggers show its first 15 bytes. Where no
    /// thread can be started, returns the reason, and `work` is destroyed without having run.
    [[nodiscard]] static std::error_code start(const std::string& name, Priority priority, std::function<void()> work);

    /// Waits until all work has ended and what it held is destroyed, but not longer than `bound`. Returns the names of
    /// what still runs then; later calls neither wait for that nor name it again. For tests.
    [[nodiscard]] static std::vector<std::string> waitForAll(std::chrono::milliseconds bound);
};

/// Starts work that nobody waits for. Where no thread can be started, it does not run.
inline void runInBackground(const std::string& name, std::function<void()> work)
{
    (void)Background::start(name, Background::Priority::background, std::move(work));
}

} // namespace morlaine
