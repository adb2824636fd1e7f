#pragma once

#include <cstddef>

namespace morlaine {

/// How much memory may be held ahead of a walk, and how many helpers may work at once. A value without a lock.
class ReadAheadLimits {
public:
    /// `helpers` is the number for folders that are in memory.
    explicit ReadAheadLimits(std::size_t helpers);

    /// True from the limit of memory until some of it is released: helpers then wait.
    [[nodiscard]] bool isFull() const { return m_isFull; }

    /// Counts memory that is held for the walk, or is about to be.
    void hold(std::size_t bytes);

    /// The opposite. Returns whether the helpers may go on from now.
    [[nodiscard]] bool release(std::size_t bytes);

    /// Allows more memory for what is near, since all that is held is far ahead. The limit falls back once most of it
    /// is released. Returns whether the helpers may go on from now.
    [[nodiscard]] bool makeRoom();

    /// How many helpers may work at once.
    [[nodiscard]] std::size_t helpers() const { return m_helpers; }

    /// Tells whether a listing has slept, as it does for a disk. While most listings do, more helpers than processors
    /// pay; otherwise they cost.
    void noteListing(bool hasSlept);

private:
    std::size_t m_bytes = 0;
    std::size_t m_mostBytes;
    bool m_isFull = false;
    const std::size_t m_fewestHelpers;
    std::size_t m_helpers;
};

} // namespace morlaine
