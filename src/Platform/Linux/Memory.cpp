#include "Platform/Memory.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <new>
#include <string>

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace morlaine {

bool canReserve(std::size_t bytes)
{
    void* const place = ::mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return place != MAP_FAILED && ::munmap(place, bytes) == 0;
}

void requireSpareMemory()
{
    constexpr std::uint64_t leastShare = 32;     // of all memory
    constexpr std::uint64_t enough = 128 * 1024; // kilobytes
    std::uint64_t total = 0;
    std::uint64_t spare = 0;
    std::ifstream file("/proc/meminfo");
    std::string name;
    std::string rest;
    for (std::uint64_t kilobytes = 0; file >> name >> kilobytes && std::getline(file, rest);) {
        if (name == "MemTotal:") {
            total = kilobytes;
        } else if (name == "MemAvailable:" || name == "SwapFree:") {
            spare += kilobytes;
        }
    }
    if (spare < std::min(total / leastShare, enough)) {
        throw std::bad_alloc();
    }
}

void* resizeBlock(void* block, std::size_t bytes) noexcept
{
    constexpr std::size_t leastInLargePages = std::size_t{4} << 20U;
    void* const resized = std::realloc(block, bytes);
    if (resized == nullptr || bytes < leastInLargePages) {
        return resized;
    }
    // All pages of the block: the system moves only a mapping that is of one kind.
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto address = reinterpret_cast<std::uintptr_t>(resized);
    const std::uintptr_t before = address % page;
    const std::uintptr_t size = (before + ::malloc_usable_size(resized) + page - 1) / page * page;
    ::madvise(static_cast<char*>(resized) - before, size, MADV_HUGEPAGE);
    return resized;
}

/// The C library maps large blocks one by one, but by default no longer those that are smaller than the largest block
/// that was freed. Arrays of one tree after another would then lie among small blocks and leave gaps.
void giveBackLargeBlocks()
{
    constexpr int leastLargeBlock = 128 * 1024; // bytes; where the C library begins
    ::mallopt(M_MMAP_THRESHOLD, leastLargeBlock);
}

/// Sanitizers bring an allocator of their own. The C library's would then be set up by the first two threads that end,
/// both at once, and it is not made for that.
void giveBackFreedMemory()
{
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    ::malloc_trim(0);
#endif
}

} // namespace morlaine
