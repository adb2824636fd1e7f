#pragma once

#include <cstddef>
#include <string>

namespace morlaine {

/// Why a text cannot be decoded.
struct DecodeError {
    std::string reason;     // what is wrong, in words
    std::size_t offset = 0; // where: bytes before the place where the fault was seen

    [[nodiscard]] std::string message() const { return reason + " at byte " + std::to_string(offset); }
};

} // namespace morlaine
