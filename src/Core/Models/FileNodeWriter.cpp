#include "Core/Models/FileNodeJson.h"
#include "Utilities/Hex.h"
#include "Utilities/JsonOutput.h"

#include <array>
#include <charconv>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

namespace {

/// Turns the text of a folder's url into the prefix of the urls inside.
void openFolder(std::string& url)
{
    constexpr std::string_view fileSystemRoot = "file:///";
    while (url.size() > fileSystemRoot.size() && url.ends_with('/')) {
        url.pop_back();
    }
    if (!url.ends_with('/')) {
        url += '/';
    }
}

/// Writes a tree from its arrays. Keeps the url of the open folder as text.
class TreeWriter {
public:
    using Position = Tree::Position;

    TreeWriter(const Tree& tree, QIODevice& sink) : m_tree(tree), m_output(sink) {}

    [[nodiscard]] bool write(Position first)
    {
        for (Position node = first; node < m_tree.endOf(first); ++node) {
            closeLists(node);
            if (node != first && node != m_openLists.back().node + 1) {
                m_output.append(",");
            }
            writeFields(node, node == first);
            if (m_tree.hasList(node)) {
                openList(node);
            } else {
                m_output.append("}");
            }
        }
        closeLists(m_tree.endOf(first));
        m_output.Flush();
        return !m_output.hasFailed();
    }

private:
    struct OpenList {
        Position node;
        std::size_t folderLength; // length of the enclosing folder's url in `m_url`
        bool hasOwnStart;         // its url does not begin with that of the enclosing folder
    };

    void writeFields(Position node, bool isTop)
    {
        const Uuid::Text id = m_tree.idOf(node).text();
        m_output.append(R"({"id":")");
        m_output.append({id.data(), id.size()});
        m_output.append(R"(","url":")");
        m_output.append(urlText(node, isTop));
        m_output.append(R"(","name":")");
        writeEscaped(m_tree.nameOf(node));
        m_output.append(R"(","size":)");
        std::array<char, 20> digits{};
        const auto [end, failure] = std::to_chars(digits.data(), digits.data() + digits.size(), m_tree.sizeOf(node));
        m_output.append({digits.data(), static_cast<std::size_t>(end - digits.data())});
        m_output.append(m_tree.isDirectory(node) ? R"(,"isDirectory":true,"fileCategory":")"
                                                 : R"(,"isDirectory":false,"fileCategory":")");
        m_output.append(m_tree.categoryOf(node).rawValue());
        m_output.append("\"");
    }

    [[nodiscard]] std::string_view urlText(Position node, bool isTop)
    {
        m_hasOwnStart = isTop || m_tree.hasUrlOutsideFolder(node);
        if (m_hasOwnStart) {
            m_ownUrl = m_tree.urlOf(node).absoluteString();
            return m_ownUrl;
        }
        m_url.resize(m_folderLength);
        FileUrl::appendPercentEncoded(m_tree.lastComponentOf(node), m_url);
        return m_url;
    }

    void openList(Position node)
    {
        m_output.append(R"(,"children":[)");
        m_openLists.push_back({node, m_folderLength, m_hasOwnStart});
        if (m_hasOwnStart) {
            m_url = m_ownUrl;
        }
        openFolder(m_url);
        m_folderLength = m_url.size();
    }

    /// Closes all lists that end before `node`.
    void closeLists(Position node)
    {
        while (!m_openLists.empty() && m_tree.endOf(m_openLists.back().node) <= node) {
            const OpenList closed = m_openLists.back();
            m_openLists.pop_back();
            m_output.append("]}");
            if (closed.hasOwnStart && !m_openLists.empty()) {
                m_url = m_tree.urlOf(m_openLists.back().node).absoluteString();
                openFolder(m_url);
            }
            m_folderLength = closed.folderLength;
        }
    }

    void writeEscaped(std::string_view text)
    {
        std::size_t written = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto c = static_cast<unsigned char>(text[i]);
            if (c < 0x20 || c == '"' || c == '\\') {
                m_output.append(text.substr(written, i - written));
                writeEscape(c);
                written = i + 1;
            }
        }
        m_output.append(text.substr(written));
    }

    void writeEscape(unsigned char c)
    {
        constexpr std::string_view escaped = "\"\\\b\f\n\r\t";
        constexpr std::string_view letters = "\"\\bfnrt";
        if (const std::size_t found = escaped.find(static_cast<char>(c)); found != std::string_view::npos) {
            m_output.append("\\");
            m_output.append(letters.substr(found, 1));
            return;
        }
        const std::array<char, 6> code{'\\', 'u', '0', '0', hexDigit(c >> 4U), hexDigit(c & 0x0FU)};
        m_output.append({code.data(), code.size()});
    }

    const Tree& m_tree;
    BufferedOutput m_output;
    std::string m_url;              // url of the open folder, or of an item in it
    std::size_t m_folderLength = 0; // length of the folder's part of `m_url`
    std::string m_ownUrl;           // url of a node that does not begin with that part
    bool m_hasOwnStart = false;     // whether this is true of the node written last
    std::vector<OpenList> m_openLists;
};

} // namespace

bool encodeFileNode(const FileNode& root, QIODevice& sink)
{
    // The buffer is too large for the stack of a small thread.
    return std::make_unique<TreeWriter>(root.tree(), sink)->write(root.position());
}

} // namespace morlaine
