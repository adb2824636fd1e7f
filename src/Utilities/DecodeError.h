#pragma once

#include <cstddef>
#include <string>

namespace morlaine {

/// Why a text cannot be decoded.
struct DecodeError {
    std::string reason;         // what is wrong, in words
    std::size_t offset = 0;     // where: bytes before the place where the fault was seen
    bool isOutOfMemory = false; // nothing is wrong with the text then

    [[nodiscard]] static DecodeError outOfMemory(std::size_t offset) { return {"out of memory", offset, true}; }

    [[nodiscard]] std::string message() const { return reason + " at byte " + std::to_string(offset); }
};

} // namespace morlaine
