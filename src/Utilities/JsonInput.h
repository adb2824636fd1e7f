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

/// The parser keeps the current string, and a few bytes for each open bracket, on one stack. This is its limit in
/// bytes.
constexpr std::size_t largestParserStack = std::size_t{256} * 1024 * 1024;

struct ParserStackExhausted {};

/// The allocator of the parser's stack.
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

/// Reads a device in large pieces. A NUL marks the end of the text; `isAtEnd` tells it from a NUL inside the text.
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

    // The parser requires these for parsing in place, which is not used.
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

/// Parses one JSON value from the current position of `source` (open for reading) to its end. Sends the events to
/// `handler`, a RapidJSON handler that also has `const std::string& fault() const`: why it refused an event. Returns
/// nothing on success.
///
/// Nesting and long strings take bounded memory and no machine stack. Running out of memory is reported like other
/// errors. The handler checks whether texts are UTF-8, which it does faster than the parser.
template <typename Handler>
[[nodiscard]] std::optional<DecodeError> parseJson(QIODevice& source, Handler& handler)
{
    // Numbers come as texts: the parser's own conversion has undefined behaviour for some zeros with an exponent.
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
