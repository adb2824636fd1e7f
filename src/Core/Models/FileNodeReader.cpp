#include "Core/Models/FileNodeJson.h"
#include "Core/Models/FileNodeJsonKeys.h"
#include "Utilities/JsonEvents.h"
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
    std::optional<FileUrl> folder;       // the url as what the folder holds shares it, known while that is read
    std::size_t childUrlStartLength = 0; // of the text with which the urls of that begin, once it was needed
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
        folder.reset();
        children.reset();
    }
};

/// Builds nodes from the leaves upward.
class NodeReader : public JsonEvents<NodeReader> {
public:
    [[nodiscard]] FileNode takeRoot() { return *std::move(m_root); }

private:
    friend class JsonEvents<NodeReader>;

    [[nodiscard]] bool isAtUnknownMember() { return !expectsNode() && level().key == JsonKey::unknown; }
    void key(std::string_view name) { level().key = keyNamed(name); }
    [[nodiscard]] bool scalar(const JsonScalar& value);
    [[nodiscard]] bool beginObject();
    [[nodiscard]] bool endObject();
    [[nodiscard]] bool beginArray();
    [[nodiscard]] bool endArray();

    [[nodiscard]] Level& level() { return m_levels[m_depth - 1]; }
    [[nodiscard]] bool expectsNode() { return m_depth == 0 || level().isInChildren; }
    [[nodiscard]] bool refuseType(std::string_view found);
    [[nodiscard]] bool string(std::string_view text);
    [[nodiscard]] std::optional<FileUrl> url(std::string_view text);
    [[nodiscard]] bool isInFolder(std::string_view text, Level& folder);

    std::vector<Level> m_levels;
    std::size_t m_depth = 0;
    std::string m_childUrlStart; // with which the urls of what a folder holds begin, for one open folder only
    std::size_t m_childUrlStartDepth = 0;
    std::optional<FileNode> m_root;
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
    current.seenKeys |= static_cast<std::uint8_t>(1U << static_cast<unsigned>(current.key));
    if (const auto* text = std::get_if<std::string_view>(&value); text != nullptr) {
        return string(*text);
    }
    if (const auto* number = std::get_if<std::int64_t>(&value); number != nullptr && current.key == JsonKey::size) {
        current.size = *number;
        return true;
    }
    if (const auto* flag = std::get_if<bool>(&value); flag != nullptr && current.key == JsonKey::isDirectory) {
        current.isDirectory = *flag;
        return true;
    }
    if (std::holds_alternative<std::nullptr_t>(value) && current.key == JsonKey::children) {
        current.children.reset();
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
            current.id = *id;
            return true;
        }
        return refuse("\"id\" is no UUID");
    case JsonKey::url:
        current.url = url(text);
        return current.url || refuse("\"url\" is no file url");
    case JsonKey::name:
        current.name = text;
        return true;
    case JsonKey::fileCategory:
        if (const auto category = FileCategory::fromRawValue(text)) {
            current.fileCategory = *category;
            return true;
        }
        return refuse("unknown \"fileCategory\"");
    default:
        return refuseType(typeName(text));
    }
}

/// The url of a child that stands in its folder's url is appended to that, so that a tree that is read shares its
/// paths like one that was scanned.
std::optional<FileUrl> NodeReader::url(std::string_view text)
{
    if (m_depth > 1) {
        Level& above = m_levels[m_depth - 2];
        if (above.folder && isInFolder(text, above)) {
            const auto component = FileUrl::percentDecoded(text.substr(above.childUrlStartLength));
            if (component && component->find('/') == std::string::npos) {
                return above.folder->appending(*component);
            }
        }
    }
    return FileUrl::parse(text);
}

/// Whether the text is that of `folder`, the innermost but one, with one component more. The text of the folder is kept
/// for the one that was asked for last, since those of all open folders would take the square of their depth. It is
/// made again only for a text that is longer, so that reading takes linear time.
bool NodeReader::isInFolder(std::string_view text, Level& folder)
{
    if (text.size() <= folder.childUrlStartLength) {
        return false;
    }
    if (m_childUrlStartDepth != m_depth - 1) {
        m_childUrlStartDepth = m_depth - 1;
        m_childUrlStart = folder.folder->absoluteString();
        if (!m_childUrlStart.ends_with('/')) {
            m_childUrlStart += '/';
        }
        folder.childUrlStartLength = m_childUrlStart.size();
    }
    return text.size() > m_childUrlStart.size() && text.starts_with(m_childUrlStart) &&
           text.find('/', m_childUrlStart.size()) == std::string_view::npos;
}

bool NodeReader::beginObject()
{
    if (!expectsNode()) {
        return refuseType("an object");
    }
    if (m_depth == deepestLevel) {
        return refuse("nested too deep");
    }
    if (m_depth == m_levels.size()) {
        m_levels.emplace_back();
    }
    ++m_depth;
    level().reset();
    return true;
}

bool NodeReader::endObject()
{
    Level& finished = level();
    for (std::uint8_t key = 0; key < requiredKeyCount; ++key) {
        if ((finished.seenKeys & (1U << key)) == 0) {
            return refuse("missing key \"" + std::string(jsonKeyNames[key]) + '"');
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

bool NodeReader::beginArray()
{
    if (expectsNode() || level().key != JsonKey::children) {
        return refuseType("an array");
    }
    Level& folder = level();
    folder.isInChildren = true;
    folder.children.emplace();
    folder.folder = folder.url ? std::optional(folder.url->asFolder()) : std::nullopt;
    folder.childUrlStartLength = 0;
    m_childUrlStartDepth = 0;
    return true;
}

bool NodeReader::endArray()
{
    level().isInChildren = false;
    return true;
}

} // namespace

std::variant<FileNode, DecodeError> decodeFileNode(QIODevice& source)
{
    NodeReader reader;
    if (const std::optional<DecodeError> error = parseJson(source, reader)) {
        return *error;
    }
    return reader.takeRoot();
}

} // namespace morlaine
