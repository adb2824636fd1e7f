#pragma once

#include <cstddef>
#include <string>

namespace morlaine {

/// Why a text cannot be decoded.
struct DecodeError {
    std::string reason;         // what is wrong, in words
    std::size_t offset = 0;     // bytes before the place where the fault was found
    bool isOutOfMemory = false; // memory ran out; the text may be valid

    [[nodiscard]] static DecodeError outOfMemory(std::size_t offset) { return {"out of memory", offset, true}; }

    [[nodiscard]] std::string message() const { return reason + " at byte " + std::to_string(offset); }
};

} // namespace morlaine
