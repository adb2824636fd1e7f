#include "Services/Search/SearchIndex.h"

#include "Services/Search/TextSearch.h"
#include "Utilities/Lowercase.h"
#include "Utilities/Utf8.h"

#include <bit>
#include <string>
#include <utility>
#include <vector>

namespace morlaine {

namespace {

/// Qt's conversion to UTF-8 would turn a lone surrogate into a question mark.
void replaceLoneSurrogates(QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
        } else if (text[i].isSurrogate()) {
            text[i] = QChar(QChar::ReplacementCharacter);
        }
    }
}

std::string queryFromText(const QString& text)
{
    QString query = text.trimmed();
    replaceLoneSurrogates(query);
    const QByteArray trimmed = query.toUtf8();
    return lowercased({trimmed.data(), static_cast<std::size_t>(trimmed.size())});
}

/// Calls `visit(position)` for each set bit, and clears the bit if it returns false.
template <typename Visit>
void sift(std::vector<std::uint64_t>& marks, Visit visit)
{
    for (std::size_t word = 0; word < marks.size(); ++word) {
        for (std::uint64_t rest = marks[word]; rest != 0; rest &= rest - 1) {
            const auto bit = static_cast<std::size_t>(std::countr_zero(rest));
            if (!visit(static_cast<Tree::Position>(word * 64 + bit))) {
                marks[word] &= ~(std::uint64_t{1} << bit);
            }
        }
    }
}

GrowingArray<Tree::Position> positionsOf(std::vector<std::uint64_t>& marks)
{
    std::size_t count = 0;
    for (const std::uint64_t word : marks) {
        count += static_cast<std::size_t>(std::popcount(word));
    }
    GrowingArray<Tree::Position> positions;
    positions.resize(count);
    sift(marks, [next = positions.data()](Tree::Position position) mutable {
        *next++ = position;
        return true;
    });
    return positions;
}

/// Marks all nodes that share the id of a marked node.
void markRepeatedIds(const Tree& tree, std::vector<std::uint64_t>& marks)
{
    const auto bit = [](Tree::Position node) { return std::uint64_t{1} << (node % 64); };
    for (const auto& [node, first] : tree.repeatedIds()) {
        if ((marks[node / 64] & bit(node)) != 0) {
            marks[first / 64] |= bit(first);
        }
    }
    for (const auto& [node, first] : tree.repeatedIds()) {
        if ((marks[first / 64] & bit(first)) != 0) {
            marks[node / 64] |= bit(node);
        }
    }
}

} // namespace

SearchIndex::SearchIndex(const FileNode& root) : m_root(root), m_lowerRootPath(lowercased(validUtf8(root.url().path())))
{
}

SearchResults SearchIndex::search(const QString& text, std::optional<FileCategory> category,
                                  std::optional<std::int64_t> minSize, std::optional<std::int64_t> maxSize) const
{
    const Tree& tree = m_root.tree();
    const std::string query = queryFromText(text);
    TextSearch textSearch(m_root, m_lowerRootPath, query);
    std::vector<std::uint64_t> marks = query.empty() ? textSearch.takeAllMarks() : textSearch.takeMarks();
    if (category) {
        sift(marks, [&](Tree::Position position) { return tree.categoryOf(position) == *category; });
    }
    if (minSize) {
        sift(marks, [&](Tree::Position position) { return tree.sizeOf(position) >= *minSize; });
    }
    if (maxSize) {
        sift(marks, [&](Tree::Position position) { return tree.sizeOf(position) <= *maxSize; });
    }
    GrowingArray<Tree::Position> positions = positionsOf(marks);
    markRepeatedIds(tree, marks);
    return SearchResults(std::make_shared<const SearchHits>(m_root, std::move(positions), std::move(marks)));
}

} // namespace morlaine
