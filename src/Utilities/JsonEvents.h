#pragma once

#include "Utilities/Utf8.h"

#include <rapidjson/rapidjson.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace morlaine {

/// A number that is written as an integer but needs more than 64 bits with sign.
struct HugeInteger {
    double nearest;
};

/// A value that is neither an object nor an array. Texts last as long as the event.
using JsonScalar = std::variant<std::nullptr_t, bool, std::int64_t, HugeInteger, double, std::string_view>;

/// What a scalar is called in a fault.
[[nodiscard]] std::string_view typeName(const JsonScalar& scalar) noexcept;

/// The number that a JSON text means; nothing when no double comes near it.
[[nodiscard]] std::optional<JsonScalar> numberFromText(std::string_view text) noexcept;

/// Turns the parser's many events into few, and passes over the values of unknown members, whatever they hold: any JSON
/// in UTF-8, but for numbers beyond 1e308 (0e400 is one of them), which the parser itself may refuse.
///
/// `Reader` derives from this and has the private members (with this class as a friend) `bool isAtUnknownMember()`,
/// `void key(std::string_view)`, and `bool scalar(const JsonScalar&)`, `bool beginObject()`, `bool endObject()`,
/// `bool beginArray()`, `bool endArray()`, which return `refuse(why)` to end the parse.
template <typename Reader>
class JsonEvents {
public:
    /// Why an event was refused; empty as long as none was.
    [[nodiscard]] const std::string& fault() const { return m_fault; }

    bool Null() { return value(nullptr); }
    bool Bool(bool flag) { return value(flag); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool)
    {
        if (isIgnored()) {
            return true;
        }
        const std::optional<JsonScalar> number = numberFromText({text, length});
        return number ? reader().scalar(*number) : refuse("a number is too large or too small");
    }
    bool Int(int) { return refuseOther(); }
    bool Uint(unsigned) { return refuseOther(); }
    bool Int64(std::int64_t) { return refuseOther(); }
    bool Uint64(std::uint64_t) { return refuseOther(); }
    bool Double(double) { return refuseOther(); }
    bool String(const char* text, rapidjson::SizeType length, bool)
    {
        const std::string_view string(text, length);
        return isValidUtf8(string) ? value(string) : refuse("a text is not UTF-8");
    }
    bool Key(const char* text, rapidjson::SizeType length, bool)
    {
        const std::string_view name(text, length);
        if (m_ignoredDepth == 0) {
            reader().key(name);
        }
        return isValidUtf8(name) || refuse("a key is not UTF-8");
    }
    bool StartObject() { return beginIgnored() || reader().beginObject(); }
    bool EndObject(rapidjson::SizeType) { return endIgnored() || reader().endObject(); }
    bool StartArray() { return beginIgnored() || reader().beginArray(); }
    bool EndArray(rapidjson::SizeType) { return endIgnored() || reader().endArray(); }

protected:
    [[nodiscard]] bool refuse(std::string why)
    {
        m_fault = std::move(why);
        return false;
    }

private:
    [[nodiscard]] Reader& reader() { return static_cast<Reader&>(*this); }

    /// The parser hands over all numbers as texts.
    [[nodiscard]] bool refuseOther() { return refuse("a number came without its text"); }

    [[nodiscard]] bool isIgnored() { return m_ignoredDepth > 0 || reader().isAtUnknownMember(); }

    bool value(const JsonScalar& scalar) { return isIgnored() || reader().scalar(scalar); }
    bool beginIgnored()
    {
        const bool begins = isIgnored();
        m_ignoredDepth += begins ? 1 : 0;
        return begins;
    }
    bool endIgnored()
    {
        const bool ends = m_ignoredDepth > 0;
        m_ignoredDepth -= ends ? 1 : 0;
        return ends;
    }

    std::size_t m_ignoredDepth = 0; // open brackets below an unknown member
    std::string m_fault;
};

} // namespace morlaine
