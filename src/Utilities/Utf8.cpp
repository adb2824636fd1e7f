#include "Utilities/Utf8.h"

#include <QStringDecoder>
#include <QUtf8StringView>

#include <cstdint>
#include <cstring>

namespace morlaine {

namespace {

/// The length of the ASCII prefix, rounded down to a multiple of eight.
std::size_t asciiPrefixLength(std::string_view bytes) noexcept
{
    std::size_t length = 0;
    for (std::uint64_t word = 0; length + sizeof word <= bytes.size(); length += sizeof word) {
        std::memcpy(&word, bytes.data() + length, sizeof word);
        if ((word & 0x8080808080808080U) != 0) {
            break;
        }
    }
    return length;
}

bool isAscii(std::string_view bytes) noexcept
{
    unsigned char all = 0;
    for (const char c : bytes) {
        all |= static_cast<unsigned char>(c);
    }
    return all < 0x80;
}

} // namespace

bool isValidUtf8(std::string_view bytes) noexcept
{
    bytes.remove_prefix(asciiPrefixLength(bytes));
    return (bytes.size() < sizeof(std::uint64_t) && isAscii(bytes)) ||
           QUtf8StringView(bytes.data(), static_cast<qsizetype>(bytes.size())).isValidUtf8();
}

QString textOfUtf8(std::string_view bytes)
{
    // QString::fromUtf8 would drop U+FEFF at the start as a byte order mark.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    return decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

std::string validUtf8(std::string_view bytes)
{
    return isValidUtf8(bytes) ? std::string(bytes) : textOfUtf8(bytes).toStdString();
}

} // namespace morlaine
