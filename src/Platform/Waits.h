#pragma once

#include <cstdint>

namespace morlaine {

/// How often the calling thread has slept so far to wait for anything, such as a disk, another thread or a timer. Does
/// not count when it was ready to run and others ran. Any thread.
[[nodiscard]] std::int64_t waitsOfThisThread() noexcept;

} // namespace morlaine
