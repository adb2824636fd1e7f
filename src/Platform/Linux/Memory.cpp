#include "Platform/Memory.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <new>
#include <string>

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace morlaine {

namespace {

constexpr std::size_t largePage = std::size_t{2} << 20U; // bytes

/// Below, the page at the end, which is used in part, would take too much memory.
constexpr bool isLarge(std::size_t bytes)
{
    return bytes >= largePage * 15 / 8;
}

constexpr std::size_t roundedUp(std::size_t bytes, std::size_t unit)
{
    return (bytes + unit - 1) / unit * unit;
}

/// A large block ends with a whole large page, so that the system can use one there.
constexpr std::size_t mappedSize(std::size_t bytes)
{
    return roundedUp(bytes, largePage);
}

/// Unused address space for a large block. Null if there is none.
void* reserve(std::size_t bytes, int access) noexcept
{
    const std::size_t size = mappedSize(bytes) + largePage;
    void* const place = ::mmap(nullptr, size, access, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED) {
        return nullptr;
    }
    auto* const first = static_cast<char*>(place);
    const auto address = reinterpret_cast<std::uintptr_t>(first);
    const std::size_t before = roundedUp(address, largePage) - address;
    if (before > 0) {
        ::munmap(first, before);
    }
    ::munmap(first + before + mappedSize(bytes), largePage - before);
    return first + before;
}

void* mapLargePages(std::size_t bytes) noexcept
{
    void* const block = reserve(bytes, PROT_READ | PROT_WRITE);
    if (block != nullptr) {
        ::madvise(block, mappedSize(bytes), MADV_HUGEPAGE);
    }
    return block;
}

void* resizeMapping(void* block, std::size_t from, std::size_t to) noexcept
{
    if (::mremap(block, mappedSize(from), mappedSize(to), 0) == MAP_FAILED) {
        void* const place = reserve(to, PROT_NONE);
        if (place == nullptr) {
            return nullptr;
        }
        if (::mremap(block, mappedSize(from), mappedSize(to), MREMAP_MAYMOVE | MREMAP_FIXED, place) == MAP_FAILED) {
            ::munmap(place, mappedSize(to));
            return nullptr;
        }
        block = place;
    }
    if (to < from) {
        const std::size_t used = roundedUp(to, static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)));
        ::madvise(static_cast<char*>(block) + used, mappedSize(to) - used, MADV_DONTNEED);
    }
    return block;
}

} // namespace

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

void* resizeBlock(void* block, std::size_t from, std::size_t to) noexcept
{
    if (isLarge(from) && isLarge(to)) {
        return resizeMapping(block, from, to);
    }
    if (!isLarge(from) && !isLarge(to)) {
        return std::realloc(block, to);
    }
    void* const other = isLarge(to) ? mapLargePages(to) : std::malloc(to);
    if (other != nullptr && from > 0) {
        std::memcpy(other, block, std::min(from, to));
        freeBlock(block, from);
    }
    return other;
}

void freeBlock(void* block, std::size_t bytes) noexcept
{
    if (isLarge(bytes)) {
        ::munmap(block, mappedSize(bytes));
    } else {
        std::free(block);
    }
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
