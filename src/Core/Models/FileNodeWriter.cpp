#include "Core/Models/FileNodeJson.h"
#include "Core/Models/FileNodeJsonKeys.h"
#include "Core/Models/TreeWalk.h"
#include "Utilities/JsonOutput.h"

#include <rapidjson/writer.h>

#include <memory>
#include <optional>
#include <string>

namespace morlaine {

namespace {

class NodeWriter {
public:
    explicit NodeWriter(QIODevice& sink) : m_output(sink), m_json(m_output) {}

    [[nodiscard]] bool write(const FileNode& root)
    {
        walkTree(
            root, [this](const FileNode& node) { begin(node); }, [this](const FileNode& node) { end(node); });
        m_output.Flush();
        return !m_output.hasFailed();
    }

private:
    void begin(const FileNode& node)
    {
        const Uuid::Text id = node.id().text();
        m_json.StartObject();
        member(JsonKey::id, {id.data(), id.size()});
        member(JsonKey::url, urlText(node));
        member(JsonKey::name, node.name());
        key(JsonKey::size);
        m_json.Int64(node.size());
        key(JsonKey::isDirectory);
        m_json.Bool(node.isDirectory());
        member(JsonKey::fileCategory, node.fileCategory().rawValue());
        if (node.children()) {
            key(JsonKey::children);
            m_json.StartArray();
        }
    }

    void end(const FileNode& node)
    {
        if (node.children()) {
            m_json.EndArray();
        }
        m_json.EndObject();
    }

    void key(JsonKey key) { string(nameOf(key)); }

    void member(JsonKey name, std::string_view value)
    {
        key(name);
        string(value);
    }

    void string(std::string_view text) { m_json.String(text.data(), static_cast<rapidjson::SizeType>(text.size())); }

    /// Siblings share the text of their folder, which is made once for a run of them.
    [[nodiscard]] std::string_view urlText(const FileNode& node)
    {
        const FileUrl url = node.url();
        const std::optional<FileUrl> folder = url.sharedFolder();
        if (!folder) {
            m_text = url.absoluteString();
            m_folder.reset();
            return m_text;
        }
        if (m_folder != folder) {
            m_folder = folder;
            m_text = folder->absoluteString();
            if (!m_text.ends_with('/')) {
                m_text += '/';
            }
            m_folderTextLength = m_text.size();
        }
        m_text.resize(m_folderTextLength);
        FileUrl::appendPercentEncoded(url.lastPathComponent(), m_text);
        return m_text;
    }

    BufferedOutput m_output;
    rapidjson::Writer<BufferedOutput> m_json;
    std::optional<FileUrl> m_folder;
    std::size_t m_folderTextLength = 0;
    std::string m_text;
};

} // namespace

bool encodeFileNode(const FileNode& root, QIODevice& sink)
{
    // The buffer is too large for the stack of a small thread.
    return std::make_unique<NodeWriter>(sink)->write(root);
}

} // namespace morlaine
