#include "Utilities/Lowercase.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>

#include <cstddef>
#include <cstdint>
#include <new>

namespace morlaine {

namespace {

constexpr std::string_view finalSigma = "ς";

/// Appends the lower-case form of ASCII text. False if the text is not ASCII; what was appended is then wrong.
bool appendLowercasedAscii(std::string_view text, std::string& result)
{
    const std::size_t start = result.size();
    result.resize(start + text.size());
    char* place = result.data() + start;
    unsigned char all = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        all |= byte;
        *place++ = static_cast<char>(byte | (static_cast<unsigned char>(byte - 'A') < 26 ? 0x20 : 0));
    }
    return all < 0x80;
}

} // namespace

void appendLowercased(std::string_view text, std::string& result)
{
    const std::size_t start = result.size();
    if (appendLowercasedAscii(text, result)) {
        return;
    }
    result.resize(start);
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode failure = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())), sink,
                              nullptr, failure);
    if (U_FAILURE(failure)) {
        throw std::bad_alloc(); // the only way it can fail
    }
    for (std::size_t sigma = start; (sigma = result.find(finalSigma, sigma)) != std::string::npos;) {
        result.replace(sigma, finalSigma.size(), "σ");
    }
}

std::string lowercased(std::string_view text)
{
    std::string result;
    appendLowercased(text, result);
    return result;
}

} // namespace morlaine
