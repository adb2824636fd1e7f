#pragma once

#include <cerrno>

namespace morlaine {

/// Makes a system call, again while a signal interrupts it. File systems of programs and of networks let that happen to
/// calls that no local disk interrupts.
template <typename Call>
[[nodiscard]] auto uninterrupted(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

} // namespace morlaine
