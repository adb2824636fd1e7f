#pragma once

#include <cstddef>

namespace morlaine {

/// Whether the program may still map so many bytes, which a limit on its address space can prevent. Any thread.
[[nodiscard]] bool canReserve(std::size_t bytes);

/// Throws std::bad_alloc if the machine has hardly any memory left: going on could make the kernel end this program or
/// another one. For work that needs memory for everything it finds. Takes some ten microseconds. Any thread.
void requireSpareMemory();

/// Gives a block of `from` bytes, none if that is 0, the size of `to` bytes, and keeps its content as far as it fits.
/// Null if there is no memory; the block is then as it was. A large block lies in large pages: the system takes, moves
/// and gives back their memory many times faster than small ones, and rounds it up to 2 MiB where the block is used;
/// what is cut off from a block is given back to the byte of a small page. Any thread.
[[nodiscard]] void* resizeBlock(void* block, std::size_t from, std::size_t to) noexcept;

/// Frees a block of resizeBlock that has so many bytes. Any thread.
void freeBlock(void* block, std::size_t bytes) noexcept;

/// From now on, freeing a large block gives its memory back to the system at once. Call before any thread is started.
void giveBackLargeBlocks();

/// Gives memory of freed small blocks back to the system, which the allocator would keep. For the end of large work.
/// Any thread.
void giveBackFreedMemory();

} // namespace morlaine
