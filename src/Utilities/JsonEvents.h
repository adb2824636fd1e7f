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

/// A number written as an integer that does not fit 64 bits with sign.
struct HugeInteger {
    double nearest;
};

/// A value that is neither an object nor an array. Texts are valid during the event only.
using JsonScalar = std::variant<std::nullptr_t, bool, std::int64_t, HugeInteger, double, std::string_view>;

/// The name of the scalar's type in an error message.
[[nodiscard]] std::string_view typeName(const JsonScalar& scalar) noexcept;

/// The number that a JSON text stands for; nothing when it is outside the range of double.
[[nodiscard]] std::optional<JsonScalar> numberFromText(std::string_view text) noexcept;

/// Reduces the parser's many events to few, and skips the values of unknown members. These may be any JSON in UTF-8,
/// except for numbers beyond 1e308 (such as 0e400), which the parser itself may reject.
///
/// `Reader` derives from this class, makes it a friend and has the private members `bool isAtUnknownMember()`, `void
/// key(std::string_view)`, `bool scalar(const JsonScalar&)`, `bool beginObject()`, `bool endObject()`, `bool
/// beginArray()` and `bool endArray()`. These return `refuse(why)` to end the parse.
template <typename Reader>
class JsonEvents {
public:
    /// Why an event was refused; empty if none was.
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

    /// Never called: the parser hands over all numbers as texts.
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

    std::size_t m_ignoredDepth = 0; // open brackets inside an unknown member
    std::string m_fault;
};

} // namespace morlaine
