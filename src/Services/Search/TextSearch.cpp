#include "Services/Search/TextSearch.h"

#include "Core/Models/TextStarts.h"
#include "Utilities/SixteenBytes.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace morlaine {

namespace {

/// A folder on the path to the current node.
struct Above {
    Tree::Position end;
    std::size_t pathLength;
};

/// Finds a text in a long one. Compares sixteen positions at a time with the first and the last byte of the text. The
/// C library's memmem searches byte by byte for texts of two bytes, which are typed often.
class Needle {
public:
    explicit Needle(std::string_view text)
        : m_text(text)
        , m_first(SixteenBytes::of(text.front()))
        , m_last(SixteenBytes::of(text.back()))
    {
    }

    /// The first occurrence from `begin` to `end`; `end` if there is none.
    [[nodiscard]] const char* find(const char* begin, const char* end) const
    {
        if (m_text.size() == 1) {
            const void* const found = std::memchr(begin, m_text.front(), static_cast<std::size_t>(end - begin));
            return found != nullptr ? static_cast<const char*>(found) : end;
        }
        const auto toLast = static_cast<std::ptrdiff_t>(m_text.size()) - 1;
        const char* const beyond = end - std::min(toLast, end - begin); // it begins before this
        while (beyond - begin >= SixteenBytes::count) {
            const int place = SixteenBytes::firstSet((SixteenBytes::at(begin) == m_first) &
                                                     (SixteenBytes::at(begin + toLast) == m_last));
            if (place == SixteenBytes::count) {
                begin += SixteenBytes::count; // not `place`, for which the next load would have to wait
                continue;
            }
            begin += place;
            if (toLast == 1 || isAt(begin)) {
                return begin;
            }
            ++begin;
        }
        while (begin < beyond && !isAt(begin)) {
            ++begin;
        }
        return begin < beyond ? begin : end;
    }

private:
    [[nodiscard]] bool isAt(const char* place) const { return std::memcmp(place, m_text.data(), m_text.size()) == 0; }

    const std::string_view m_text;
    const SixteenBytes::Bytes m_first;
    const SixteenBytes::Bytes m_last;
};

} // namespace

TextSearch::TextSearch(const FileNode& root, std::string_view rootPath, std::string_view query)
    : m_tree(root.tree())
    , m_nodes(m_tree.arrays())
    , m_root(root.position())
    , m_end(m_tree.endOf(m_root))
    , m_rootPath(rootPath)
    , m_query(query)
    , m_marks((m_tree.size() + std::size_t{63}) / 64)
{
}

std::vector<std::uint64_t> TextSearch::takeMarks()
{
    if (m_rootPath.find(m_query) != std::string_view::npos) {
        return takeAllMarks();
    }
    if (m_query.find('/') == std::string_view::npos) {
        findInNames();
    } else if (!m_tree.lowerNames().hasSlashInNames()) {
        findAcrossSlashes();
    } else {
        findInWholePaths();
    }
    // The path of the root is its location, which need not contain its name: the name counts for the root only.
    if (lowerName(m_root).find(m_query) != std::string_view::npos) {
        markRange(m_root, m_root + 1);
    }
    findExtensions();
    return std::move(m_marks);
}

std::vector<std::uint64_t> TextSearch::takeAllMarks()
{
    markWithContents(m_root);
    return std::move(m_marks);
}

template <typename Visit>
void TextSearch::eachOccurrence(Visit visit)
{
    const Needle needle(m_query);
    const auto search = [&needle](std::string_view text, const GrowingArray<std::uint32_t>& starts, std::size_t next,
                                  std::size_t end, auto visitNumber) {
        while (next < end) {
            const char* const found = needle.find(text.data() + starts[next], text.data() + starts[end]);
            const auto offset = static_cast<std::size_t>(found - text.data());
            if (offset == starts[end]) {
                return;
            }
            next = visitNumber(textAt(starts, offset, next));
        }
    };
    search({m_nodes.names.data(), m_nodes.names.size()}, m_nodes.nameStarts, m_root + 1, m_end,
           [&](std::size_t number) { return visit(static_cast<Position>(number)); });
    const LowerNames& changed = m_tree.lowerNames();
    search(changed.text(), changed.starts(), changed.numberFrom(m_root + 1), changed.numberFrom(m_end),
           [&](std::size_t number) { return changed.numberFrom(visit(changed.node(number)), number + 1); });
}

template <typename Visit>
void TextSearch::eachNameWith(std::string_view start, Visit visit)
{
    for (Position node = m_root + 1; node < m_end;) {
        const char first = m_nodes.names[m_nodes.nameStarts[node]];
        node = first == start.front() && m_nodes.name(node).starts_with(start) ? visit(node) : node + 1;
    }
    const LowerNames& changed = m_tree.lowerNames();
    const std::size_t end = changed.numberFrom(m_end);
    for (std::size_t number = changed.numberFrom(m_root + 1); number < end;) {
        const bool isHit = changed.name(number).starts_with(start);
        number = isHit ? changed.numberFrom(visit(changed.node(number)), number + 1) : number + 1;
    }
}

void TextSearch::findInNames()
{
    eachOccurrence([this](Position node) { return markWithContents(node); });
}

/// If the query has a slash and no name does, the last slash of the query matches the one between a node and its
/// folder.
void TextSearch::findAcrossSlashes()
{
    const std::size_t slash = m_query.rfind('/');
    const std::string_view folderEnd = m_query.substr(0, slash);
    if (slash + 1 == m_query.size()) {
        for (Position folder = m_root; folder < m_end;) {
            const bool isHit = m_tree.endOf(folder) > folder + 1 && pathEndsWith(folder, folderEnd);
            folder = isHit ? markRange(folder + 1, m_tree.endOf(folder)) : folder + 1;
        }
        return;
    }
    Position asked = m_end; // the folder of the node before
    bool isHit = false;
    eachNameWith(m_query.substr(slash + 1), [&](Position node) {
        if (const Position folder = m_tree.parentOf(node); folder != std::exchange(asked, folder)) {
            isHit = pathEndsWith(folder, folderEnd);
        }
        return isHit ? markWithContents(node) : node + 1;
    });
}

/// The general case, for trees from a file whose names contain slashes: checks the end of each node's whole path.
void TextSearch::findInWholePaths()
{
    std::string path(m_rootPath);
    std::vector<Above> above{{m_end, path.size()}};
    for (Position node = m_root + 1; node < m_end;) {
        while (above.back().end <= node) {
            above.pop_back();
        }
        path.resize(above.back().pathLength);
        const std::size_t start = path.size() + 1 - std::min(path.size() + 1, m_query.size());
        path += '/';
        path += lowerName(node);
        if (path.find(m_query, start) != std::string::npos) {
            node = markWithContents(node);
            continue;
        }
        above.push_back({m_tree.endOf(node), path.size()});
        ++node;
    }
}

void TextSearch::findExtensions()
{
    for (const LowerNames::OddExtension& odd : m_tree.lowerNames().oddExtensions()) {
        if (odd.node >= m_root && odd.node < m_end && odd.lowerExtension == m_query) {
            markRange(odd.node, odd.node + 1);
        }
    }
}

std::string_view TextSearch::lowerName(Position node) const
{
    const LowerNames& changed = m_tree.lowerNames();
    return m_nodes.has(node, TreeArrays::hasOtherLowerName) ? changed.name(changed.numberFrom(node))
                                                            : m_nodes.name(node);
}

bool TextSearch::pathEndsWith(Position node, std::string_view text) const
{
    for (; node != m_root; node = m_tree.parentOf(node)) {
        const std::string_view name = lowerName(node);
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
    return m_rootPath.ends_with(text);
}

TextSearch::Position TextSearch::markWithContents(Position node)
{
    return markRange(node, m_tree.endOf(node));
}

TextSearch::Position TextSearch::markRange(Position begin, Position end)
{
    constexpr std::uint64_t all = ~std::uint64_t{0};
    const std::size_t first = begin / 64;
    const std::size_t last = (end - 1) / 64;
    const std::uint64_t fromBegin = all << (begin % 64);
    const std::uint64_t toEnd = all >> (63 - (end - 1) % 64);
    if (first == last) {
        m_marks[first] |= fromBegin & toEnd;
        return end;
    }
    m_marks[first] |= fromBegin;
    std::fill(m_marks.begin() + static_cast<std::ptrdiff_t>(first) + 1,
              m_marks.begin() + static_cast<std::ptrdiff_t>(last), all);
    m_marks[last] |= toEnd;
    return end;
}

} // namespace morlaine
