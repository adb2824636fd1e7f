#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace morlaine::bench {

using Clock = std::chrono::steady_clock;

/// Wall-clock seconds of `work()`.
template <typename Work>
[[nodiscard]] double secondsOf(Work work)
{
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The median of one or more values.
[[nodiscard]] double median(std::vector<double> values);

/// The resident memory of this process, in bytes.
[[nodiscard]] std::int64_t residentBytes();

/// The peak resident memory since `forgetPeak()`, in bytes.
[[nodiscard]] std::int64_t peakResidentBytes();
void forgetPeak();

} // namespace morlaine::bench
