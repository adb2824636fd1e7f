#pragma once

#include "Utilities/DecodeError.h"

#include <QIODevice>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <optional>

namespace morlaine {

/// The parser keeps the string that it reads, and a little for each open bracket, on one stack that may grow so far.
constexpr std::size_t largestParserStack = std::size_t{256} * 1024 * 1024;

struct ParserStackExhausted {};

/// What the parser's stack grows by.
class BoundedAllocator {
public:
    static constexpr bool kNeedFree = true;

    static void* Malloc(std::size_t size) { return Realloc(nullptr, 0, size); }

    static void* Realloc(void* memory, std::size_t /*oldSize*/, std::size_t newSize)
    {
        if (newSize > largestParserStack) {
            throw ParserStackExhausted();
        }
        void* grown = std::realloc(memory, newSize);
        if (grown == nullptr) {
            throw ParserStackExhausted();
        }
        return grown;
    }

    static void Free(void* memory) { std::free(memory); }
};

/// Reads a device in large pieces. A NUL stands for the end of the text; `isAtEnd` tells whether it was one.
class BufferedInput {
public:
    using Ch = char;

    explicit BufferedInput(QIODevice& source) : m_source(source) { refill(); }

    [[nodiscard]] char Peek() const { return *m_next; }

    char Take()
    {
        const char c = *m_next;
        if (m_next != m_end && ++m_next == m_end) {
            refill();
        }
        return c;
    }

    [[nodiscard]] std::size_t Tell() const { return m_consumed + static_cast<std::size_t>(m_next - m_buffer.data()); }
    [[nodiscard]] bool isAtEnd() const { return m_next == m_end; }
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

    // The parser names these for streams that are written in place; this one never is.
    char* PutBegin() { std::abort(); }
    void Put(char) { std::abort(); }
    std::size_t PutEnd(char*) { std::abort(); }

private:
    void refill()
    {
        m_consumed = Tell();
        const qint64 length = m_source.read(m_buffer.data(), static_cast<qint64>(m_buffer.size() - 1));
        m_hasFailed = length < 0;
        m_next = m_buffer.data();
        m_end = m_next + std::max<qint64>(length, 0);
        *m_end = '\0';
    }

    QIODevice& m_source;
    std::array<char, 64 * 1024> m_buffer{};
    char* m_next = m_buffer.data();
    char* m_end = m_buffer.data();
    std::size_t m_consumed = 0;
    bool m_hasFailed = false;
};

using JsonParser = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, BoundedAllocator>;

/// Parses the one JSON value that `source` (open for reading) holds from here to its end, and hands its events to
/// `handler`, RapidJSON's kind with `const std::string& fault() const` beside: the reason for which an event was
/// refused. Nothing when all went well. Neither deep nesting nor a long string costs more than a bounded amount of
/// memory here, and nothing of the machine stack; where memory runs out all the same, that is a fault like others.
/// Whether texts are UTF-8 is left to the handler, which is faster at it.
template <typename Handler>
[[nodiscard]] std::optional<DecodeError> parseJson(QIODevice& source, Handler& handler)
{
    // Numbers come as texts: the parser's own conversion is undefined for some that are zero.
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    std::unique_ptr<BufferedInput> input;
    rapidjson::ParseResult result;
    try {
        // The buffer is too large for the stack of a small thread.
        input = std::make_unique<BufferedInput>(source);
        JsonParser parser;
        result = parser.Parse<flags>(*input, handler);
    } catch (const ParserStackExhausted&) {
        return DecodeError{"a string is too long or brackets nest too deep", input->Tell()};
    } catch (const std::bad_alloc&) {
        return DecodeError::outOfMemory(input ? input->Tell() : 0);
    }
    if (input->hasFailed()) {
        return DecodeError{"the file cannot be read", input->Tell()};
    }
    if (!handler.fault().empty()) {
        return DecodeError{handler.fault(), result.Offset()};
    }
    if (result.IsError()) {
        return DecodeError{rapidjson::GetParseError_En(result.Code()), result.Offset()};
    }
    if (!input->isAtEnd()) {
        return DecodeError{"something follows the value", input->Tell()};
    }
    return std::nullopt;
}

} // namespace morlaine
