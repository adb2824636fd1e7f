#include "Services/Persistence/HistoricalScan.h"

#include "Utilities/JsonEvents.h"
#include "Utilities/JsonInput.h"
#include "Utilities/JsonOutput.h"

#include <rapidjson/prettywriter.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace morlaine {

namespace {

enum Member : std::uint8_t { id, path, date, totalSize, filesCount, directoriesCount, unknown };

constexpr std::array<std::string_view, 6> memberNames{"id",        "path",       "date",
                                                      "totalSize", "filesCount", "directoriesCount"};

Member memberNamed(std::string_view name)
{
    return static_cast<Member>(std::ranges::find(memberNames, name) - memberNames.begin());
}

class HistoryWriter {
public:
    explicit HistoryWriter(QIODevice& sink) : m_output(sink), m_json(m_output) { m_json.SetIndent(' ', 2); }

    [[nodiscard]] bool write(std::span<const HistoricalScan> history)
    {
        m_json.StartArray();
        for (const HistoricalScan& scan : history) {
            write(scan);
        }
        m_json.EndArray(); // flushes the output
        return !m_output.hasFailed();
    }

private:
    void write(const HistoricalScan& scan)
    {
        m_json.StartObject();
        key(id);
        string(scan.id.toString());
        key(path);
        string(scan.path);
        key(date);
        m_json.Double(scan.date.secondsSince2001);
        key(totalSize);
        m_json.Int64(scan.totalSize);
        key(filesCount);
        m_json.Int64(scan.filesCount);
        key(directoriesCount);
        m_json.Int64(scan.directoriesCount);
        m_json.EndObject();
    }

    void key(Member member) { string(memberNames[member]); }
    void string(std::string_view text) { m_json.String(text.data(), static_cast<rapidjson::SizeType>(text.size())); }

    BufferedOutput m_output;
    rapidjson::PrettyWriter<BufferedOutput> m_json;
};

class HistoryReader : public JsonEvents<HistoryReader> {
public:
    [[nodiscard]] std::vector<HistoricalScan> takeHistory() { return std::move(m_history); }

private:
    friend class JsonEvents<HistoryReader>;

    [[nodiscard]] bool isAtUnknownMember() const { return m_isInObject && m_member == unknown; }
    void key(std::string_view name) { m_member = memberNamed(name); }

    [[nodiscard]] bool scalar(const JsonScalar& value)
    {
        if (!m_isInObject) {
            return refuseType(typeName(value));
        }
        m_seenMembers |= static_cast<std::uint8_t>(1U << m_member);
        return assign(m_history.back(), value) || refuseType(typeName(value));
    }

    [[nodiscard]] bool beginObject()
    {
        if (!m_isInArray || m_isInObject) {
            return refuseType("an object");
        }
        m_isInObject = true;
        m_seenMembers = 0;
        m_history.emplace_back();
        return true;
    }

    [[nodiscard]] bool endObject()
    {
        m_isInObject = false;
        return m_seenMembers == (1U << memberNames.size()) - 1 || refuse("a key is missing");
    }

    [[nodiscard]] bool beginArray()
    {
        if (m_isInArray) {
            return refuseType("an array");
        }
        m_isInArray = true;
        return true;
    }

    [[nodiscard]] bool endArray() { return true; }

    [[nodiscard]] bool refuseType(std::string_view found)
    {
        const std::string where = m_isInObject ? "\"" + std::string(memberNames[m_member]) + '"' : "the history";
        return refuse("unexpected type of " + where + ", found " + std::string(found));
    }

    /// Assigns the value of the current member; false if its type is wrong.
    [[nodiscard]] bool assign(HistoricalScan& scan, const JsonScalar& value) const
    {
        const auto* text = std::get_if<std::string_view>(&value);
        switch (m_member) {
        case id: {
            const auto read = text != nullptr ? Uuid::fromText(*text) : std::nullopt;
            scan.id = read.value_or(Uuid());
            return read.has_value();
        }
        case path:
            scan.path = text != nullptr ? *text : std::string_view();
            return text != nullptr;
        case date:
            return assignDate(scan.date, value);
        case totalSize:
            return assignInteger(scan.totalSize, value);
        case filesCount:
            return assignInteger(scan.filesCount, value);
        case directoriesCount:
            return assignInteger(scan.directoriesCount, value);
        case unknown:
            break;
        }
        return false;
    }

    [[nodiscard]] static bool assignInteger(std::int64_t& member, const JsonScalar& value)
    {
        const auto* number = std::get_if<std::int64_t>(&value);
        member = number != nullptr ? *number : 0;
        return number != nullptr;
    }

    [[nodiscard]] static bool assignDate(Date& member, const JsonScalar& value)
    {
        if (const auto* seconds = std::get_if<double>(&value)) {
            member.secondsSince2001 = *seconds;
            return true;
        }
        if (const auto* seconds = std::get_if<std::int64_t>(&value)) {
            member.secondsSince2001 = static_cast<double>(*seconds);
            return true;
        }
        if (const auto* seconds = std::get_if<HugeInteger>(&value)) {
            member.secondsSince2001 = seconds->nearest;
            return true;
        }
        return false;
    }

    std::vector<HistoricalScan> m_history;
    Member m_member = unknown;
    std::uint8_t m_seenMembers = 0;
    bool m_isInArray = false;
    bool m_isInObject = false;
};

} // namespace

bool encodeHistory(std::span<const HistoricalScan> history, QIODevice& sink)
{
    return std::make_unique<HistoryWriter>(sink)->write(history);
}

std::variant<std::vector<HistoricalScan>, DecodeError> decodeHistory(QIODevice& source)
{
    HistoryReader reader;
    if (const auto error = parseJson(source, reader)) {
        return *error;
    }
    return reader.takeHistory();
}

} // namespace morlaine
