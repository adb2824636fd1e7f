#include "Core/Models/FileNodeJson.h"
#include "Core/Models/FileNodeReaders.h"
#include "Core/Models/TreeBuilder.h"
#include "Utilities/JsonEvents.h"
#include "Utilities/JsonInput.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

namespace morlaine {

namespace {

/// The members of a node's JSON object, in the order in which they are written.
enum class JsonKey : std::uint8_t { id, url, name, size, isDirectory, fileCategory, children, unknown };

constexpr std::array<std::string_view, 7> jsonKeyNames{"id",          "url",          "name",    "size",
                                                       "isDirectory", "fileCategory", "children"};

/// All members but the last are required.
constexpr std::uint8_t requiredKeyCount = 6;

constexpr std::string_view nameOf(JsonKey key)
{
    return jsonKeyNames[static_cast<std::size_t>(key)];
}

constexpr JsonKey keyNamed(std::string_view name)
{
    for (std::size_t i = 0; i < jsonKeyNames.size(); ++i) {
        if (jsonKeyNames[i] == name) {
            return static_cast<JsonKey>(i);
        }
    }
    return JsonKey::unknown;
}

/// An open object.
struct Level {
    TreeBuilder::Fields fields;
    std::int64_t childrenSize = 0; // sum of the children read so far
    JsonKey key = JsonKey::unknown;
    std::uint8_t seenKeys = 0;
    std::uint8_t seenSinceAdded = 0;
    bool isInChildren = false;
    bool isAdded = false;               // to the tree, before its children are
    TreeBuilder::Position position = 0; // valid once it is added
};

constexpr std::uint8_t bitOf(JsonKey key)
{
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(key));
}

/// Adds a node to the tree at the start of its children, or at its end if it has none. Keys behind the children amend
/// the node.
class NodeReader : public JsonEvents<NodeReader> {
public:
    [[nodiscard]] FileNode takeRoot() { return m_builder.finish(); }

private:
    friend class JsonEvents<NodeReader>;

    [[nodiscard]] bool isAtUnknownMember() { return !expectsNode() && level().key == JsonKey::unknown; }
    void key(std::string_view name) { level().key = keyNamed(name); }
    [[nodiscard]] bool scalar(const JsonScalar& value);
    [[nodiscard]] bool beginObject();
    [[nodiscard]] bool endObject();
    [[nodiscard]] bool beginArray();
    [[nodiscard]] bool endArray();

    [[nodiscard]] Level& level() { return m_levels.back(); }
    [[nodiscard]] bool expectsNode() { return m_levels.empty() || level().isInChildren; }
    [[nodiscard]] bool refuseType(std::string_view found);
    [[nodiscard]] bool string(std::string_view text);
    [[nodiscard]] bool addSize();
    void add(Level& level);

    void amend(Level& level);

    std::vector<Level> m_levels;  // of all open objects
    std::int64_t m_filesSize = 0; // sum of the files read so far
    std::string m_url;            // all bytes; this and the name are those of the object that was read last
    std::string m_name;
    TreeBuilder m_builder{TreeBuilder::Source::given};
};

bool NodeReader::refuseType(std::string_view found)
{
    if (expectsNode()) {
        return refuse("expected an object, found " + std::string(found));
    }
    return refuse("unexpected type of \"" + std::string(nameOf(level().key)) + "\", found " + std::string(found));
}

bool NodeReader::scalar(const JsonScalar& value)
{
    if (expectsNode()) {
        return refuseType(typeName(value));
    }
    Level& current = level();
    current.seenKeys |= bitOf(current.key);
    current.seenSinceAdded |= bitOf(current.key);
    if (const auto* text = std::get_if<std::string_view>(&value); text != nullptr) {
        return string(*text);
    }
    if (const auto* number = std::get_if<std::int64_t>(&value); number != nullptr && current.key == JsonKey::size) {
        current.fields.size = *number;
        return true;
    }
    if (const auto* flag = std::get_if<bool>(&value); flag != nullptr && current.key == JsonKey::isDirectory) {
        current.fields.isDirectory = *flag;
        return true;
    }
    if (std::holds_alternative<std::nullptr_t>(value) && current.key == JsonKey::children) {
        if (current.isAdded) {
            m_builder.dropList(current.position);
        }
        return true;
    }
    return refuseType(typeName(value));
}

bool NodeReader::string(std::string_view text)
{
    Level& current = level();
    switch (current.key) {
    case JsonKey::id:
        if (const auto id = Uuid::fromText(text)) {
            current.fields.id = *id;
            return true;
        }
        return refuse("\"id\" is no UUID");
    case JsonKey::url:
        if (const auto url = FileUrl::parse(text)) {
            m_url = url->bytes();
            return true;
        }
        return refuse("\"url\" is no file url");
    case JsonKey::name:
        m_name = text;
        return true;
    case JsonKey::fileCategory:
        if (const auto category = FileCategory::fromRawValue(text)) {
            current.fields.category = *category;
            return true;
        }
        return refuse("unknown \"fileCategory\"");
    default:
        return refuseType(typeName(text));
    }
}

bool NodeReader::beginObject()
{
    if (!expectsNode()) {
        return refuseType("an object");
    }
    if (m_levels.size() == deepestLevel) {
        return refuse("nested too deep");
    }
    m_levels.emplace_back();
    m_url.clear();
    m_name.clear();
    return true;
}

bool NodeReader::endObject()
{
    Level& finished = level();
    for (std::uint8_t key = 0; key < requiredKeyCount; ++key) {
        if ((finished.seenKeys & bitOf(static_cast<JsonKey>(key))) == 0) {
            return refuse("missing key \"" + std::string(jsonKeyNames[key]) + '"');
        }
    }
    if (!addSize()) {
        return refuse("a size is negative or a sum of sizes beyond 64 bits");
    }
    if (finished.isAdded) {
        amend(finished);
    } else {
        add(finished);
    }
    m_levels.pop_back();
    return true;
}

/// Adds the size of the finished node to the sums of its folder and of all files. False for a negative size and for a
/// sum beyond 64 bits: making the same sum later would end the program.
bool NodeReader::addSize()
{
    const TreeBuilder::Fields& finished = level().fields;
    const auto add = [&finished](std::int64_t& sum) { return !__builtin_add_overflow(sum, finished.size, &sum); };
    return finished.size >= 0 && (finished.isDirectory || add(m_filesSize)) &&
           (m_levels.size() == 1 || add(m_levels[m_levels.size() - 2].childrenSize));
}

void NodeReader::add(Level& level)
{
    level.position = m_builder.add(level.fields, m_url, m_name);
    level.isAdded = true;
    level.seenSinceAdded = 0;
}

/// Updates an added node with the fields that followed its children.
void NodeReader::amend(Level& level)
{
    constexpr std::uint8_t fieldKeys = bitOf(JsonKey::children) - 1;
    if ((level.seenSinceAdded & fieldKeys) == 0) {
        return;
    }
    const auto isGivenAgain = [&level](JsonKey key) { return (level.seenSinceAdded & bitOf(key)) != 0; };
    m_builder.amend(level.position, level.fields,
                    isGivenAgain(JsonKey::url) ? m_url : m_builder.nodes().location(level.position),
                    isGivenAgain(JsonKey::name) ? std::optional(m_name) : std::nullopt);
    level.seenSinceAdded = 0;
}

bool NodeReader::beginArray()
{
    if (expectsNode() || level().key != JsonKey::children) {
        return refuseType("an array");
    }
    Level& folder = level();
    if (!folder.isAdded) {
        add(folder);
    } else {
        m_builder.dropList(folder.position);
        amend(folder);
    }
    m_builder.openList();
    folder.isInChildren = true;
    return true;
}

bool NodeReader::endArray()
{
    m_builder.closeList();
    level().isInChildren = false;
    return true;
}

} // namespace

std::variant<FileNode, DecodeError> readAnyForm(QIODevice& source)
{
    NodeReader reader;
    if (const std::optional<DecodeError> error = parseJson(source, reader)) {
        return *error;
    }
    return reader.takeRoot();
}

std::variant<FileNode, DecodeError> decodeFileNode(QIODevice& source)
{
    const qint64 start = source.pos();
    try {
        if (!source.isSequential()) {
            if (std::optional<FileNode> root = readExactForm(source)) {
                return *std::move(root);
            }
            if (!source.seek(start)) {
                return DecodeError{"the file cannot be read", 0};
            }
        }
        return readAnyForm(source);
    } catch (const std::bad_alloc&) {
        return DecodeError::outOfMemory(static_cast<std::size_t>(source.pos()));
    } catch (const TreeTooLarge& error) {
        return DecodeError{error.what(), static_cast<std::size_t>(source.pos())};
    }
}

} // namespace morlaine
