#pragma once

#include <atomic>
#include <cstddef>
#include <optional>
#include <vector>

namespace morlaine {

/// Work in numbered pieces that a thread shares with helpers. The thread never waits for a helper, which may not get a
/// processor for long: what no helper has finished in time, it does itself. Each method is called by any thread.
template <typename Result>
class SharedWork {
public:
    explicit SharedWork(std::size_t pieces) : m_pieces(pieces) {}

    /// On a helper: does pieces that nobody has begun, by `work(piece, result)` with a result to fill.
    template <typename Work>
    void help(Work work)
    {
        while (const std::optional<std::size_t> number = takeNext()) {
            Piece& piece = m_pieces[*number];
            work(*number, piece.result);
            piece.isFinished.store(true, std::memory_order_release);
        }
    }

    /// On the thread that wants the work done: does pieces by `work(piece)`, and calls `use(piece, result)` for those
    /// that a helper has finished.
    template <typename Work, typename Use>
    void finish(Work work, Use use)
    {
        (void)goOn(work, use, [] { return false; });
    }

    /// The same, until `mustPause()`, which is asked after each piece. Returns whether all pieces are done; if not,
    /// call it again on the same thread.
    template <typename Work, typename Use, typename MustPause>
    [[nodiscard]] bool goOn(Work work, Use use, MustPause mustPause)
    {
        while (const std::optional<std::size_t> number = takeNext()) {
            work(*number);
            m_pieces[*number].isDone = true;
            if (mustPause()) {
                return false;
            }
        }
        while (m_used < m_pieces.size()) {
            const std::size_t number = m_used++;
            const Piece& piece = m_pieces[number];
            if (piece.isDone) {
                continue;
            }
            if (piece.isFinished.load(std::memory_order_acquire)) {
                use(number, piece.result);
            } else {
                work(number);
            }
            if (mustPause()) {
                return false;
            }
        }
        return true;
    }

    /// Helpers end after the piece that each is at.
    void abandon() { m_next.store(m_pieces.size(), std::memory_order_relaxed); }

private:
    struct Piece {
        Result result{};
        std::atomic<bool> isFinished{false}; // by a helper
        bool isDone = false;                 // by the thread that wants it
    };

    [[nodiscard]] std::optional<std::size_t> takeNext()
    {
        const std::size_t number = m_next.fetch_add(1, std::memory_order_relaxed);
        return number < m_pieces.size() ? std::optional(number) : std::nullopt;
    }

    std::vector<Piece> m_pieces;
    std::atomic<std::size_t> m_next{0};
    std::size_t m_used = 0; // the results before it are used
};

} // namespace morlaine
