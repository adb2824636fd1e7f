#include "Core/Models/FileNodeJson.h"
#include "Core/Models/FileNodeJsonKeys.h"
#include "Utilities/JsonInput.h"

#include <utility>

namespace morlaine {

namespace {

/// Folders may nest this deep. Every node's url holds the names of all folders above it, so that a true tree of such
/// depth would fill more than ten gigabytes of text.
constexpr std::size_t deepestLevel = 100'000;

/// An object whose end has not been read yet. Levels are used again, so that their texts keep their memory.
struct Level {
    Uuid id;
    std::optional<FileUrl> url;
    std::string urlText;
    std::string name;
    std::int64_t size = 0;
    bool isDirectory = false;
    FileCategory fileCategory;
    std::optional<std::vector<FileNode>> children;

    JsonKey key = JsonKey::unknown;
    std::uint8_t seenKeys = 0;
    bool isInChildren = false;

    void reset()
    {
        seenKeys = 0;
        isInChildren = false;
        url.reset();
        urlText.clear();
        children.reset();
    }
};

/// Takes the parser's events and builds nodes from the leaves upward. A method returns false to stop the parser.
class NodeBuilder {
public:
    [[nodiscard]] const std::string& fault() const { return m_fault; }
    [[nodiscard]] FileNode takeRoot() { return *std::move(m_root); }

    bool Null()
    {
        return value("null", JsonKey::children, [](Level& level) {
            level.children.reset();
            return true;
        });
    }
    bool Bool(bool flag)
    {
        return value("a boolean", JsonKey::isDirectory, [flag](Level& level) {
            level.isDirectory = flag;
            return true;
        });
    }
    bool Int(int number) { return Int64(number); }
    bool Uint(unsigned number) { return Int64(number); }
    bool Int64(std::int64_t number)
    {
        return value("an integer", JsonKey::size, [number](Level& level) {
            level.size = number;
            return true;
        });
    }
    bool Uint64(std::uint64_t number)
    {
        return std::in_range<std::int64_t>(number) ? Int64(static_cast<std::int64_t>(number))
                                                   : value("an integer beyond 64 bits");
    }
    bool Double(double) { return value("a number that is no 64-bit integer"); }
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return value("a number"); }
    bool String(const char* text, rapidjson::SizeType length, bool) { return string({text, length}); }
    bool Key(const char* text, rapidjson::SizeType length, bool);
    bool StartObject();
    bool EndObject(rapidjson::SizeType);
    bool StartArray();
    bool EndArray(rapidjson::SizeType);

private:
    [[nodiscard]] Level& level() { return m_levels[m_depth - 1]; }
    [[nodiscard]] bool expectsNode() { return m_depth == 0 || level().isInChildren; }

    bool fail(std::string fault)
    {
        m_fault = std::move(fault);
        return false;
    }
    bool wrongType(std::string_view found);
    bool string(std::string_view text);
    bool url(std::string_view text);

    /// A value of a type that no known member has.
    bool value(std::string_view found)
    {
        return m_ignoredDepth > 0 || (!expectsNode() && level().key == JsonKey::unknown) || wrongType(found);
    }

    /// A value of the type that the member `expected` has, and `assign` puts it there.
    template <typename Assign>
    bool value(std::string_view found, JsonKey expected, Assign assign)
    {
        if (m_ignoredDepth == 0 && !expectsNode() && level().key == expected) {
            markSeen(expected);
            return assign(level());
        }
        return value(found);
    }

    void markSeen(JsonKey key) { level().seenKeys |= static_cast<std::uint8_t>(1U << static_cast<unsigned>(key)); }

    std::vector<Level> m_levels;
    std::size_t m_depth = 0;
    std::size_t m_ignoredDepth = 0; // open brackets below an unknown member
    std::optional<FileNode> m_root;
    std::string m_fault;
};

bool NodeBuilder::wrongType(std::string_view found)
{
    if (expectsNode()) {
        return fail("expected an object, found " + std::string(found));
    }
    return fail("unexpected type of \"" + std::string(nameOf(level().key)) + "\", found " + std::string(found));
}

bool NodeBuilder::string(std::string_view text)
{
    if (m_ignoredDepth > 0 || expectsNode()) {
        return value("a string");
    }
    switch (const JsonKey key = level().key; key) {
    case JsonKey::id:
        if (const auto id = Uuid::fromText(text)) {
            markSeen(key);
            level().id = *id;
            return true;
        }
        return fail("\"id\" is no UUID");
    case JsonKey::url:
        markSeen(key);
        return url(text);
    case JsonKey::name:
        markSeen(key);
        level().name = text;
        return true;
    case JsonKey::fileCategory:
        if (const auto category = FileCategory::fromRawValue(text)) {
            markSeen(key);
            level().fileCategory = *category;
            return true;
        }
        return fail("unknown \"fileCategory\"");
    default:
        return value("a string");
    }
}

/// The url of a child that stands in its folder's url is appended to that, so that a tree that is read shares its
/// paths like one that was scanned.
bool NodeBuilder::url(std::string_view text)
{
    Level& current = level();
    current.urlText = text;
    if (m_depth > 1) {
        const Level& folder = m_levels[m_depth - 2];
        std::string_view folderText = folder.urlText;
        if (folderText.ends_with('/')) {
            folderText.remove_suffix(1);
        }
        if (folder.url && text.size() > folderText.size() + 1 && text.starts_with(folderText) &&
            text[folderText.size()] == '/' && text.find('/', folderText.size() + 1) == std::string_view::npos) {
            const auto component = FileUrl::percentDecoded(text.substr(folderText.size() + 1));
            if (component && component->find('/') == std::string::npos) {
                current.url = folder.url->appending(*component);
                return true;
            }
        }
    }
    current.url = FileUrl::parse(text);
    return current.url || fail("\"url\" is no file url");
}

bool NodeBuilder::Key(const char* text, rapidjson::SizeType length, bool)
{
    if (m_ignoredDepth == 0) {
        level().key = keyNamed({text, length});
    }
    return true;
}

bool NodeBuilder::StartObject()
{
    if (m_ignoredDepth > 0 || (!expectsNode() && level().key == JsonKey::unknown)) {
        ++m_ignoredDepth;
        return true;
    }
    if (!expectsNode()) {
        return wrongType("an object");
    }
    if (m_depth == deepestLevel) {
        return fail("nested too deep");
    }
    if (m_depth == m_levels.size()) {
        m_levels.emplace_back();
    }
    ++m_depth;
    level().reset();
    return true;
}

bool NodeBuilder::EndObject(rapidjson::SizeType)
{
    if (m_ignoredDepth > 0) {
        --m_ignoredDepth;
        return true;
    }
    Level& finished = level();
    for (std::uint8_t key = 0; key < requiredKeyCount; ++key) {
        if ((finished.seenKeys & (1U << key)) == 0) {
            return fail("missing key \"" + std::string(jsonKeyNames[key]) + '"');
        }
    }
    FileNode node(finished.id, *finished.url, finished.name, finished.size, finished.isDirectory, finished.fileCategory,
                  std::exchange(finished.children, std::nullopt));
    --m_depth;
    if (m_depth == 0) {
        m_root = std::move(node);
    } else {
        level().children->push_back(std::move(node));
    }
    return true;
}

bool NodeBuilder::StartArray()
{
    if (m_ignoredDepth > 0 || (!expectsNode() && level().key == JsonKey::unknown)) {
        ++m_ignoredDepth;
        return true;
    }
    if (expectsNode() || level().key != JsonKey::children) {
        return wrongType("an array");
    }
    level().isInChildren = true;
    level().children.emplace();
    return true;
}

bool NodeBuilder::EndArray(rapidjson::SizeType)
{
    if (m_ignoredDepth > 0) {
        --m_ignoredDepth;
    } else {
        level().isInChildren = false;
    }
    return true;
}

} // namespace

std::variant<FileNode, DecodeError> decodeFileNode(QIODevice& source)
{
    NodeBuilder builder;
    if (const std::optional<DecodeError> error = parseJson<rapidjson::kParseNoFlags>(source, builder)) {
        return *error;
    }
    return builder.takeRoot();
}

} // namespace morlaine
