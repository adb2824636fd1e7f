#pragma once

#include <chrono>
#include <string_view>

namespace morlaine {

/// Which of the session's message buses answer. Qt waits for a bus without limit, so that one which accepts
/// connections and then says nothing would keep the window from ever opening.
struct MessageBuses {
    bool session = true;       // true as well when there is nothing to try
    bool accessibility = true; // the bus on which assistive programs listen

    /// Tries the buses that Qt would connect to, and gives up after `patience` in all. Takes a millisecond
    /// where they live.
    [[nodiscard]] static MessageBuses probe(std::chrono::milliseconds patience);

    /// Whether there is a living bus at the address, or one that cannot be tried.
    [[nodiscard]] static bool isAlive(std::string_view address, std::chrono::milliseconds patience);
};

} // namespace morlaine
