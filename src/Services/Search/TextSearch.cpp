#include "Services/Search/TextSearch.h"

#include "Services/Search/NameSearch.h"

#include <algorithm>
#include <string>
#include <utility>

namespace morlaine {

namespace {

/// A folder on the path to the current node.
struct Above {
    Tree::Position end;
    std::size_t pathLength;
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
        markNamesWith(FileNode::at(m_tree, m_root), m_query, m_marks);
    } else if (!m_tree.lowerNames().hasSlashInNames()) {
        findAcrossSlashes();
    } else {
        findInWholePaths();
    }
    // The path of the root is its location, which need not contain its name: the name counts for the root only.
    if (lowerName(m_root).find(m_query) != std::string_view::npos) {
        mark(m_root, m_root + 1);
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

/// If the query has a slash and no name does, the last slash of the query matches the one between a node and its
/// folder.
void TextSearch::findAcrossSlashes()
{
    const std::size_t slash = m_query.rfind('/');
    const std::string_view folderEnd = m_query.substr(0, slash);
    if (slash + 1 == m_query.size()) {
        for (Position folder = m_root; folder < m_end;) {
            const bool isHit = m_tree.endOf(folder) > folder + 1 && pathEndsWith(folder, folderEnd);
            folder = isHit ? mark(folder + 1, m_tree.endOf(folder)) : folder + 1;
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
            mark(odd.node, odd.node + 1);
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
    return mark(node, m_tree.endOf(node));
}

TextSearch::Position TextSearch::mark(Position begin, Position end)
{
    markRange(m_marks, begin, end);
    return end;
}

} // namespace morlaine
