#pragma once

#include <cstdint>
#include <string>

namespace morlaine {

/// A size in bytes as people read it, in decimal units: "Zero KB", "1 byte", "999 bytes", "1 KB", "1.2 MB",
/// "1.23 GB". Bytes and kilobytes show no decimals, megabytes at most one, larger units at most two; trailing
/// zeros are dropped, and a figure that rounds up to 1000 moves to the next unit. Halves round away from zero;
/// a negative count is its magnitude behind a minus sign. Any thread.
[[nodiscard]] std::string byteCountText(std::int64_t bytes);

} // namespace morlaine
