#include "Platform/Memory.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <new>
#include <string>

#include <malloc.h>
#include <sys/mman.h>

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

/// The C library maps large blocks one by one, but by default no longer those that are smaller than the largest block
/// that was freed. Arrays of one tree after another would then lie among small blocks and leave gaps.
void giveBackLargeBlocks()
{
    constexpr int leastLargeBlock = 128 * 1024; // bytes; where the C library begins
    ::mallopt(M_MMAP_THRESHOLD, leastLargeBlock);
}

} // namespace morlaine
