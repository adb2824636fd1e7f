#include "Core/Models/FileNodeReaders.h"
#include "Core/Models/TextWindow.h"
#include "Core/Models/TreeBuilder.h"
#include "Utilities/Hex.h"
#include "Utilities/SixteenBytes.h"
#include "Utilities/Utf8.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

namespace {

enum CharacterKind : std::uint8_t { plain, quote, backslash, refused, notAscii };

constexpr std::array<CharacterKind, 256> characterKinds = [] {
    std::array<CharacterKind, 256> kinds{};
    for (std::size_t c = 0; c < kinds.size(); ++c) {
        kinds[c] = c < 0x20 ? refused : c < 0x80 ? plain : notAscii;
    }
    kinds['"'] = quote;
    kinds['\\'] = backslash;
    return kinds;
}();

CharacterKind kindOf(char c)
{
    return characterKinds[static_cast<unsigned char>(c)];
}

/// The first character from `place` on that does not stand for itself in a component of a url, or separates two. There
/// is one before the end of the padding.
const char* firstSpecial(const char* place)
{
    static_assert(SixteenBytes::count <= TextWindow::padding);
    for (;; place += SixteenBytes::count) {
        const SixteenBytes::Bytes text = SixteenBytes::at(place);
        SixteenBytes::Bytes isOther = text < SixteenBytes::of(' '); // also bytes beyond ASCII, which are negative
        for (const char c : {'%', '"', '\\', '/', '?', '#'}) {
            isOther |= text == SixteenBytes::of(c);
        }
        if (const int first = SixteenBytes::firstSet(isOther); first != SixteenBytes::count) {
            return place + first;
        }
    }
}

class ExactFormReader {
public:
    explicit ExactFormReader(QIODevice& source) : m_window(source) {}

    [[nodiscard]] std::optional<FileNode> read()
    {
        if (!begin() || !node()) {
            return std::nullopt;
        }
        while (!m_openLists.empty()) {
            if (!begin() || !listItem()) {
                return std::nullopt;
            }
        }
        if (!begin() || m_place != m_window.end()) {
            return std::nullopt;
        }
        return m_builder.finish();
    }

private:
    struct OpenList {
        std::size_t urlLength;     // length of `m_url` in the enclosing list
        std::int64_t childrenSize; // sum of the children read so far
    };

    [[nodiscard]] bool begin()
    {
        m_window.passTo(m_place);
        const bool isFilled = m_window.fill();
        m_place = m_window.next();
        return isFilled;
    }

    /// Skips `text` if it comes next.
    template <std::size_t size>
    [[nodiscard]] bool expect(const char (&text)[size])
    {
        static_assert(size <= TextWindow::padding);
        if (std::memcmp(m_place, text, size - 1) != 0) {
            return false;
        }
        m_place += size - 1;
        return true;
    }

    [[nodiscard]] std::size_t textLeft() const { return static_cast<std::size_t>(m_window.end() - m_place); }

    /// Reads a node, or the end of the open list.
    [[nodiscard]] bool listItem()
    {
        if (*m_place == ']') {
            ++m_place;
            m_builder.closeList();
            m_url.resize(m_openLists.back().urlLength);
            m_openLists.pop_back();
            m_isAtListStart = false;
            return expect("}");
        }
        return (m_isAtListStart || expect(",")) && node();
    }

    [[nodiscard]] bool node()
    {
        if (!expect(R"({"id":")") || !uuid() || !expect(R"(","url":")") || !(m_openLists.empty() ? rootUrl() : url()) ||
            !expect(R"(","name":")") || !name() || !expect(R"(","size":)") || !size() ||
            !expect(R"(,"isDirectory":)") || !flag() || !expect(R"(,"fileCategory":")") || !category() || !addSize()) {
            return false;
        }
        if (m_openLists.empty()) {
            m_builder.add(m_fields, m_rootUrl->bytes(), m_name);
        } else {
            m_builder.addComponent(m_fields, m_component, m_name);
        }
        m_isAtListStart = false;
        return expect("\"}") || (expect(R"(","children":[)") && openList());
    }

    /// False for sums beyond 64 bits; the other reader reports them.
    [[nodiscard]] bool addSize()
    {
        const auto add = [this](std::int64_t& sum) { return !__builtin_add_overflow(sum, m_fields.size, &sum); };
        return (m_fields.isDirectory || add(m_filesSize)) &&
               (m_openLists.empty() || add(m_openLists.back().childrenSize));
    }

    [[nodiscard]] bool openList()
    {
        if (m_openLists.size() + 1 == deepestLevel) {
            return false;
        }
        m_builder.openList();
        m_openLists.push_back({m_url.size(), 0});
        m_url += m_urlText;
        if (!m_url.ends_with('/')) {
            m_url += '/';
        }
        m_isAtListStart = true;
        return true;
    }

    [[nodiscard]] bool uuid()
    {
        static_assert(Uuid::textLength <= TextWindow::padding); // a truncated text is read into the padding
        const std::optional<Uuid> id = Uuid::fromText({m_place, Uuid::textLength});
        m_place += Uuid::textLength;
        m_fields.id = id.value_or(Uuid());
        return id.has_value();
    }

    /// The root's url must be in the form in which it is written, so that it is a prefix of the urls inside.
    [[nodiscard]] bool rootUrl()
    {
        const char* const start = m_place;
        while (*(m_place = firstSpecial(m_place)) == '/' || *m_place == '%') {
            ++m_place;
        }
        m_urlText = {start, static_cast<std::size_t>(m_place - start)};
        m_rootUrl = FileUrl::parse(m_urlText);
        if (!m_rootUrl || m_rootUrl->absoluteString() != m_urlText) {
            return false;
        }
        constexpr std::string_view fileSystemRoot = "file:///";
        while (m_urlText.size() > fileSystemRoot.size() && m_urlText.ends_with('/')) {
            m_urlText.remove_suffix(1);
        }
        m_component = {}; // never equal to a name
        return true;
    }

    [[nodiscard]] bool url()
    {
        if (textLeft() < m_url.size() || std::memcmp(m_place, m_url.data(), m_url.size()) != 0) {
            return false;
        }
        m_place += m_url.size();
        const char* const start = m_place;
        bool hasPercent = false;
        while (*(m_place = firstSpecial(m_place)) == '%') {
            hasPercent = true;
            ++m_place;
        }
        m_urlText = {start, static_cast<std::size_t>(m_place - start)};
        m_component = m_urlText;
        if (*m_place != '"' || m_urlText.empty()) {
            return false;
        }
        return !hasPercent || decodeComponent();
    }

    [[nodiscard]] bool decodeComponent()
    {
        const std::optional<std::string> decoded = FileUrl::percentDecoded(m_urlText);
        if (!decoded || decoded->find('/') != std::string::npos) {
            return false;
        }
        m_decodedComponent = *decoded;
        m_component = m_decodedComponent;
        return true;
    }

    /// Ends before a quote or a control character. What follows the name begins with a quote.
    [[nodiscard]] bool name()
    {
        const char* const start = m_place;
        if (!m_component.empty() && m_component.size() < textLeft() && start[m_component.size()] == '"' &&
            m_component.data() == m_urlText.data() && std::memcmp(start, m_component.data(), m_component.size()) == 0) {
            m_name = m_component;
            m_place += m_component.size();
            return true;
        }
        bool isAscii = true;
        for (;; ++m_place) {
            const CharacterKind kind = kindOf(*m_place);
            if (kind == backslash) {
                return escapedName(start);
            }
            if (kind == quote || kind == refused) {
                m_name = {start, static_cast<std::size_t>(m_place - start)};
                return isAscii || isValidUtf8(m_name);
            }
            isAscii = isAscii && kind != notAscii;
        }
    }

    /// A name with escapes of the kinds that FileNodeWriter writes.
    [[nodiscard]] bool escapedName(const char* start)
    {
        m_unescapedName.assign(start, m_place);
        for (;; ++m_place) {
            const CharacterKind kind = kindOf(*m_place);
            if (kind == quote || kind == refused) {
                m_name = m_unescapedName;
                return isValidUtf8(m_name);
            }
            if (kind != backslash) {
                m_unescapedName += *m_place;
                continue;
            }
            constexpr std::string_view letters = "\"\\bfnrt";
            constexpr std::string_view meanings = "\"\\\b\f\n\r\t";
            const char letter = *++m_place;
            if (const std::size_t found = letters.find(letter); found != std::string_view::npos) {
                m_unescapedName += meanings[found];
                continue;
            }
            const int value = letter == 'u' && m_place[1] == '0' && m_place[2] == '0'
                                  ? hexValue(m_place[3]) * 16 | hexValue(m_place[4])
                                  : -1;
            if (value < 0 || value >= 0x20) {
                return false;
            }
            m_unescapedName += static_cast<char>(value);
            m_place += 4;
        }
    }

    /// Longer and negative numbers are left to the other reader.
    [[nodiscard]] bool size()
    {
        const char* const start = m_place;
        std::int64_t value = 0;
        for (; *m_place >= '0' && *m_place <= '9' && m_place - start < 18; ++m_place) {
            value = value * 10 + (*m_place - '0');
        }
        m_fields.size = value;
        return m_place != start && (*start != '0' || m_place == start + 1);
    }

    [[nodiscard]] bool flag()
    {
        m_fields.isDirectory = *m_place == 't';
        return m_fields.isDirectory ? expect("true") : expect("false");
    }

    [[nodiscard]] bool category()
    {
        constexpr std::size_t longest = 16;
        static_assert(longest <= TextWindow::padding);
        const std::string_view text(m_place, longest);
        const auto found = FileCategory::fromRawValue(text.substr(0, text.find('"')));
        if (!found) {
            return false;
        }
        m_fields.category = *found;
        m_place += found->rawValue().size();
        return true;
    }

    TextWindow m_window;
    const char* m_place = m_window.next();
    TreeBuilder m_builder{TreeBuilder::Source::given};
    std::string m_url; // prefix of the urls in the open list
    std::vector<OpenList> m_openLists;
    bool m_isAtListStart = false;
    std::int64_t m_filesSize = 0; // sum of the files read so far

    // The current node. The views point into the window or into one of the strings.
    TreeBuilder::Fields m_fields;
    std::optional<FileUrl> m_rootUrl;
    std::string_view m_urlText; // the root's url, or the last component of another
    std::string_view m_component;
    std::string_view m_name;
    std::string m_decodedComponent;
    std::string m_unescapedName;
};

} // namespace

std::optional<FileNode> readExactForm(QIODevice& source)
{
    return ExactFormReader(source).read();
}

} // namespace morlaine
