#include "Services/Search/SearchIndex.h"

#include "Services/Search/TextSearch.h"
#include "Utilities/Lowercase.h"

#include <bit>
#include <string>
#include <utility>
#include <vector>

namespace morlaine {

namespace {

std::string queryFromText(const QString& text)
{
    const QByteArray trimmed = text.trimmed().toUtf8();
    return lowercased({trimmed.data(), static_cast<std::size_t>(trimmed.size())});
}

std::vector<std::uint64_t> allMarked(FlatNodes::Position count)
{
    std::vector<std::uint64_t> marks((count + std::size_t{63}) / 64, ~std::uint64_t{0});
    marks.back() >>= (64 - count % 64) % 64;
    return marks;
}

/// Calls `visit(position)` for each bit that is set, and clears it where that returns false.
template <typename Visit>
void sift(std::vector<std::uint64_t>& marks, Visit visit)
{
    for (std::size_t word = 0; word < marks.size(); ++word) {
        for (std::uint64_t rest = marks[word]; rest != 0; rest &= rest - 1) {
            const auto bit = static_cast<std::size_t>(std::countr_zero(rest));
            if (!visit(static_cast<FlatNodes::Position>(word * 64 + bit))) {
                marks[word] &= ~(std::uint64_t{1} << bit);
            }
        }
    }
}

std::vector<FlatNodes::Position> positionsOf(std::vector<std::uint64_t>& marks)
{
    std::size_t count = 0;
    for (const std::uint64_t word : marks) {
        count += static_cast<std::size_t>(std::popcount(word));
    }
    std::vector<FlatNodes::Position> positions;
    positions.reserve(count);
    sift(marks, [&positions](FlatNodes::Position position) {
        positions.push_back(position);
        return true;
    });
    return positions;
}

/// A hit whose id stands for another node in the index marks that one.
void markRepeatedIds(const FlatNodes& nodes, std::vector<std::uint64_t>& marks)
{
    for (const auto& [position, first] : nodes.repeatedIds()) {
        if ((marks[position / 64] >> (position % 64) & 1) != 0) {
            marks[first / 64] |= std::uint64_t{1} << (first % 64);
        }
    }
}

} // namespace

SearchResults SearchIndex::search(const QString& text, std::optional<FileCategory> category,
                                  std::optional<std::int64_t> minSize, std::optional<std::int64_t> maxSize) const
{
    const FlatNodes& nodes = *m_flatNodes;
    const std::string query = queryFromText(text);
    std::vector<std::uint64_t> marks = query.empty() ? allMarked(nodes.size()) : TextSearch(nodes, query).takeMarks();
    if (category) {
        sift(marks, [&](FlatNodes::Position position) { return nodes.categoryOf(position) == *category; });
    }
    if (minSize) {
        sift(marks, [&](FlatNodes::Position position) { return nodes.sizeOf(position) >= *minSize; });
    }
    if (maxSize) {
        sift(marks, [&](FlatNodes::Position position) { return nodes.sizeOf(position) <= *maxSize; });
    }
    std::vector<FlatNodes::Position> positions = positionsOf(marks);
    markRepeatedIds(nodes, marks);
    return SearchResults(
        std::make_shared<const SearchHits>(SearchHits{m_flatNodes, std::move(positions), std::move(marks)}));
}

} // namespace morlaine
