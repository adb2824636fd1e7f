#include "Services/Search/NameSearch.h"

#include "Core/Models/TextStarts.h"
#include "Platform/Background.h"
#include "Utilities/SharedWork.h"
#include "Utilities/SixteenBytes.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace morlaine {

namespace {

using Position = Tree::Position;

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

/// Searches the tree in pieces, each with words of marks of its own.
class NameSearch {
public:
    static constexpr Position pieceSize = 65'536; // nodes

    NameSearch(const FileNode& root, std::string_view query)
        : m_root(root)
        , m_query(query)
        , m_begin(root.position() + 1)
        , m_end(root.tree().endOf(root.position()))
        , m_work(m_begin < m_end ? (m_end - 1) / pieceSize - m_begin / pieceSize + 1 : 0)
    {
    }

    /// On a helper thread.
    void help()
    {
        m_work.help([this](std::size_t number, Found& found) {
            const Piece piece = pieceAt(number);
            found.marks.resize(pieceSize / 64);
            found.reach = search(piece.begin, piece.end, found.marks, piece.origin);
        });
    }

    void finish(std::span<std::uint64_t> marks)
    {
        Position markedBegin = m_begin; // the last contents of a folder that reach beyond its piece
        Position markedEnd = m_begin;
        const auto markBeyond = [&](const Piece& piece, Position reach) {
            if (piece.end < reach) {
                markRange(marks, piece.end, reach);
                markedBegin = piece.end;
                markedEnd = reach;
            }
        };
        m_work.finish(
            [&](std::size_t number) {
                const Piece piece = pieceAt(number);
                const bool isMarked = markedBegin <= piece.begin && piece.begin < markedEnd;
                const Position begin = isMarked ? std::min(markedEnd, piece.end) : piece.begin;
                markBeyond(piece, search(begin, piece.end, marks, 0));
            },
            [&](std::size_t number, const Found& found) {
                const Piece piece = pieceAt(number);
                const std::span words = marks.subspan(piece.origin / 64);
                for (std::size_t word = 0; word < std::min(words.size(), found.marks.size()); ++word) {
                    words[word] |= found.marks[word];
                }
                markBeyond(piece, found.reach);
            });
    }

private:
    struct Piece {
        Position origin; // of the marks
        Position begin;
        Position end;
    };

    /// The marks of a piece, and where the contents of its hits end if that is behind the piece.
    struct Found {
        std::vector<std::uint64_t> marks;
        Position reach = 0;
    };

    [[nodiscard]] Piece pieceAt(std::size_t number) const
    {
        const Position origin = (m_begin / pieceSize + static_cast<Position>(number)) * pieceSize;
        return {origin, std::max(m_begin, origin), origin + std::min(m_end - origin, pieceSize)};
    }

    /// Marks what it finds up to `end`, and returns where the contents of the last hit end.
    Position search(Position begin, Position end, std::span<std::uint64_t> marks, Position origin) const
    {
        const TreeArrays& nodes = m_root.tree().arrays();
        const LowerNames& changed = m_root.tree().lowerNames();
        Position reach = end;
        const auto visit = [&](Position node) {
            const Position after = nodes.ends[node];
            markRange(marks, node - origin, std::min(after, end) - origin);
            reach = std::max(reach, after);
            return after;
        };
        eachOccurrence({nodes.names.data(), nodes.names.size()}, nodes.nameStarts, begin, end,
                       [&](std::size_t number) { return visit(static_cast<Position>(number)); });
        eachOccurrence(changed.text(), changed.starts(), changed.numberFrom(begin), changed.numberFrom(end),
                       [&](std::size_t number) { return changed.numberFrom(visit(changed.node(number)), number + 1); });
        return reach;
    }

    /// Calls `visit(number)` for the texts `next`...`end` - 1 that contain the query, and continues at the number that
    /// it returns.
    template <typename Visit>
    void eachOccurrence(std::string_view text, const GrowingArray<std::uint32_t>& starts, std::size_t next,
                        std::size_t end, Visit visit) const
    {
        const Needle needle(m_query);
        while (next < end) {
            const char* const found = needle.find(text.data() + starts[next], text.data() + starts[end]);
            const auto offset = static_cast<std::size_t>(found - text.data());
            if (offset == starts[end]) {
                return;
            }
            next = visit(textAt(starts, offset, next));
        }
    }

    const FileNode m_root;
    const std::string m_query;
    const Position m_begin;
    const Position m_end;
    SharedWork<Found> m_work;
};

} // namespace

void markRange(std::span<std::uint64_t> marks, Position begin, Position end)
{
    constexpr std::uint64_t all = ~std::uint64_t{0};
    const std::size_t first = begin / 64;
    const std::size_t last = (end - 1) / 64;
    const std::uint64_t fromBegin = all << (begin % 64);
    const std::uint64_t toEnd = all >> (63 - (end - 1) % 64);
    if (first == last) {
        marks[first] |= fromBegin & toEnd;
        return;
    }
    marks[first] |= fromBegin;
    std::ranges::fill(marks.subspan(first + 1, last - first - 1), all);
    marks[last] |= toEnd;
}

void markNamesWith(const FileNode& root, std::string_view query, std::span<std::uint64_t> marks)
{
    const auto search = std::make_shared<NameSearch>(root, query);
    const Position nodes = root.tree().endOf(root.position()) - root.position();
    Background::startHelpers("search", nodes / NameSearch::pieceSize / 2, [search] { search->help(); });
    search->finish(marks);
}

} // namespace morlaine
