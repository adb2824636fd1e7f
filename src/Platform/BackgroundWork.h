#pragma once

#include <functional>
#include <utility>

namespace morlaine {

/// Runs `work` on a thread of its own, behind everything that somebody waits for: the last in line for processor and
/// disk. Returns at once. Nothing waits for it, not even the end of the program, which cuts it short; so it may
/// touch only what it holds. Work that cannot be started is dropped. Any thread.
void runInBackground(std::function<void()> work);

/// Lets go of `value` on such a thread: the last handle of a large tree takes its while.
template <typename Value>
void releaseInBackground(Value value)
{
    runInBackground([kept = std::move(value)] {});
}

} // namespace morlaine
