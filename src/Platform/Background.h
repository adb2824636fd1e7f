#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace morlaine {

/// Runs the program's background work. Each piece of work has its own detached thread. The program does not wait for it
/// at exit, so work may only touch objects that it owns. An exception ends the work and is discarded; work that must
/// report a failure catches it itself. Any thread.
class Background {
public:
    enum class Priority {
        userInitiated, ///< the priority of the process: somebody waits for the result
        helping,       ///< the same, but away from the caller's processor: the caller does a share of the work
        background,    ///< the lowest priority for processor and disk
    };

    Background() = delete;

    /// Starts `work` and returns at once. `name` describes it; debuggers show the first 15 bytes. If no thread can be
    /// started, returns the reason and destroys `work` without running it.
    [[nodiscard]] static std::error_code start(const std::string& name, Priority priority, std::function<void()> work);

    /// Starts helpers for work that the caller does a share of: at most `most`, and one for each processor but the
    /// caller's. Each runs `help`. None if no thread can be started.
    static void startHelpers(const std::string& name, std::size_t most, const std::function<void()>& help);

    /// Waits until all work has ended and is destroyed, but not longer than `bound`. Returns the names of the work that
    /// still runs; later calls ignore it. For tests.
    [[nodiscard]] static std::vector<std::string> waitForAll(std::chrono::milliseconds bound);
};

/// Starts work whose result nobody waits for. If no thread can be started, it does not run.
inline void runInBackground(const std::string& name, std::function<void()> work)
{
    (void)Background::start(name, Background::Priority::background, std::move(work));
}

} // namespace morlaine
