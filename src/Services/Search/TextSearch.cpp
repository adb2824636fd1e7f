#include "Services/Search/TextSearch.h"

#include <string>
#include <utility>

#include <string.h> // memmem

namespace morlaine {

namespace {

/// A folder above the node that a search has come to.
template <typename Value>
struct Above {
    FlatNodes::Position end;
    Value value;
};

/// Leaves the folders that end before `position`.
template <typename Value>
void leaveFolders(std::vector<Above<Value>>& above, FlatNodes::Position position)
{
    while (above.back().end <= position) {
        above.pop_back();
    }
}

} // namespace

TextSearch::TextSearch(const FlatNodes& nodes, std::string_view query)
    : m_nodes(nodes)
    , m_query(query)
    , m_marks((nodes.size() + std::size_t{63}) / 64)
{
}

std::vector<std::uint64_t> TextSearch::takeMarks()
{
    if (m_nodes.lowerRootPath().find(m_query) != std::string::npos) {
        markRange(0, m_nodes.size());
        return std::move(m_marks);
    }
    if (m_query.find('/') == std::string_view::npos) {
        findInNames();
    } else if (!m_nodes.hasSlashInNames()) {
        findAcrossSlashes();
    } else {
        findInWholePaths();
    }
    // The root's own name is no part of its path: it counts for the root alone.
    if (m_nodes.lowerName(0).find(m_query) != std::string_view::npos) {
        markRange(0, 1);
    }
    findExtensions();
    return std::move(m_marks);
}

/// All names at once, from one occurrence to the next.
void TextSearch::findInNames()
{
    const std::string_view names = m_nodes.lowerNames();
    FlatNodes::Position next = 1;
    while (next < m_nodes.size()) {
        const std::string_view rest = names.substr(m_nodes.nameOffset(next));
        const void* found = ::memmem(rest.data(), rest.size(), m_query.data(), m_query.size());
        if (found == nullptr) {
            return;
        }
        const auto offset = static_cast<std::size_t>(static_cast<const char*>(found) - names.data());
        const FlatNodes::Position position = m_nodes.positionAtOffset(offset, next);
        markWithContents(position);
        next = m_nodes.endOf(position);
    }
}

/// With a slash in the query and none in names, the last one falls on the slash between a node and its folder.
void TextSearch::findAcrossSlashes()
{
    const std::size_t slash = m_query.rfind('/');
    const std::string_view folderEnd = m_query.substr(0, slash);
    const std::string_view nameStart = m_query.substr(slash + 1);
    std::vector<Above<bool>> above{{m_nodes.size(), pathEndsWith(0, folderEnd)}};
    for (FlatNodes::Position position = 1; position < m_nodes.size();) {
        leaveFolders(above, position);
        const FlatNodes::Position end = m_nodes.endOf(position);
        if (above.back().value && m_nodes.lowerName(position).starts_with(nameStart)) {
            markRange(position, end);
            position = end;
            continue;
        }
        if (end > position + 1) {
            above.push_back({end, pathEndsWith(position, folderEnd)});
        }
        ++position;
    }
}

/// The plain way, for the tree that a file invented: looks at the end of each path that a node has added.
void TextSearch::findInWholePaths()
{
    std::string path = m_nodes.lowerRootPath();
    std::vector<Above<std::size_t>> above{{m_nodes.size(), path.size()}};
    for (FlatNodes::Position position = 1; position < m_nodes.size();) {
        leaveFolders(above, position);
        path.resize(above.back().value);
        const std::size_t start = path.size() + 1 - std::min(path.size() + 1, m_query.size());
        path += '/';
        path += m_nodes.lowerName(position);
        const FlatNodes::Position end = m_nodes.endOf(position);
        if (path.find(m_query, start) != std::string::npos) {
            markRange(position, end);
            position = end;
            continue;
        }
        above.push_back({end, path.size()});
        ++position;
    }
}

void TextSearch::findExtensions()
{
    for (const FlatNodes::OddExtension& odd : m_nodes.oddExtensions()) {
        if (odd.lowerExtension == m_query) {
            markRange(odd.position, std::size_t{odd.position} + 1);
        }
    }
}

bool TextSearch::pathEndsWith(FlatNodes::Position position, std::string_view text) const
{
    for (; position != 0; position = m_nodes.parentOf(position)) {
        const std::string_view name = m_nodes.lowerName(position);
        if (text.size() <= name.size()) {
            return name.ends_with(text);
        }
        if (!text.ends_with(name)) {
            return false;
        }
        text.remove_suffix(name.size());
        if (text.back() != '/') {
            return false;
        }
        text.remove_suffix(1);
    }
    return m_nodes.lowerRootPath().ends_with(text);
}

void TextSearch::markRange(std::size_t begin, std::size_t end)
{
    constexpr std::uint64_t all = ~std::uint64_t{0};
    const std::size_t first = begin / 64;
    const std::size_t last = (end - 1) / 64;
    const std::uint64_t fromBegin = all << (begin % 64);
    const std::uint64_t toEnd = all >> (63 - (end - 1) % 64);
    if (first == last) {
        m_marks[first] |= fromBegin & toEnd;
        return;
    }
    m_marks[first] |= fromBegin;
    for (std::size_t word = first + 1; word < last; ++word) {
        m_marks[word] = all;
    }
    m_marks[last] |= toEnd;
}

} // namespace morlaine
