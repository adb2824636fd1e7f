#pragma once

#include "Utilities/DecodeError.h"

#include <QBuffer>
#include <QByteArray>

#include <cstddef>
#include <cstdlib>
#include <variant>

namespace morlaine::fuzz {

template <typename Decode>
auto decoded(QByteArray bytes, Decode decode)
{
    QBuffer source(&bytes);
    source.open(QIODevice::ReadOnly);
    return decode(source);
}

/// Decodes the bytes; encodes and decodes the result again. Ends the program if the two results differ.
template <typename Decode, typename Encode>
void checkRoundTrip(const unsigned char* data, std::size_t size, Decode decode, Encode encode)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto first = decoded(bytes, decode);
    if (std::holds_alternative<DecodeError>(first)) {
        const auto& error = std::get<DecodeError>(first);
        if (error.reason.empty() || error.offset > size) {
            std::abort();
        }
        return;
    }
    QByteArray text;
    QBuffer sink(&text);
    sink.open(QIODevice::WriteOnly);
    if (!encode(std::get<0>(first), sink)) {
        std::abort();
    }
    const auto second = decoded(text, decode);
    if (second.index() != 0 || std::get<0>(second) != std::get<0>(first)) {
        std::abort();
    }
}

} // namespace morlaine::fuzz
