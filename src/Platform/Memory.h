#pragma once

#include <cstddef>

namespace morlaine {

/// Whether the program may still map so many bytes, which a limit on its address space can prevent. Any thread.
[[nodiscard]] bool canReserve(std::size_t bytes);

/// Throws std::bad_alloc if the machine has hardly any memory left: going on could make the kernel end this program or
/// another one. For work that needs memory for everything it finds. Takes some ten microseconds. Any thread.
void requireSpareMemory();

/// Like std::realloc, and its blocks are freed by std::free. The system is asked for large pages for large blocks: it
/// takes and gives back their memory many times faster, and rounds it up to 2 MiB while the block grows. Any thread.
[[nodiscard]] void* resizeBlock(void* block, std::size_t bytes) noexcept;

/// From now on, freeing a large block gives its memory back to the system at once. Call before any thread is started.
void giveBackLargeBlocks();

/// Gives memory of freed small blocks back to the system, which the allocator would keep. For the end of large work.
/// Any thread.
void giveBackFreedMemory();

} // namespace morlaine
