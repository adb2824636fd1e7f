#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace morlaine::bench {

using Clock = std::chrono::steady_clock;

/// Seconds that `work()` takes by the wall clock.
template <typename Work>
[[nodiscard]] double secondsOf(Work work)
{
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The middle of the values, of which there must be at least one.
[[nodiscard]] double median(std::vector<double> values);

/// Memory that this process holds right now, in bytes.
[[nodiscard]] std::int64_t residentBytes();

/// The most memory that this process held at once since `forgetPeak()`, in bytes.
[[nodiscard]] std::int64_t peakResidentBytes();
void forgetPeak();

} // namespace morlaine::bench
