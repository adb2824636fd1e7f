#pragma once

#include <chrono>
#include <string_view>

namespace morlaine {

/// Which of the session's message buses answer. Qt waits for a bus without limit: one that accepts connections but
/// never answers would keep the window from opening.
struct MessageBuses {
    bool session = true;       // also true if there is no bus to try
    bool accessibility = true; // the bus of assistive programs

    /// Tries the buses that Qt would connect to, for `patience` in all. Takes about a millisecond if they answer.
    [[nodiscard]] static MessageBuses probe(std::chrono::milliseconds patience);

    /// Whether the bus at the address answers; also true if it cannot be tried.
    [[nodiscard]] static bool isAlive(std::string_view address, std::chrono::milliseconds patience);
};

} // namespace morlaine
