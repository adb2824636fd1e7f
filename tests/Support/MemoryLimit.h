#pragma once

#include <cstdlib>
#include <fstream>
#include <vector>

#include <sys/resource.h>
#include <unistd.h>

namespace morlaine::test {

/// During its lifetime, the process cannot allocate blocks of a megabyte or more.
class MemoryLimit {
public:
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    static constexpr bool isPossible = false; // the sanitizers need address space
#else
    static constexpr bool isPossible = true;
#endif

    MemoryLimit()
    {
        constexpr std::size_t most = 10'000;
        m_blocks.reserve(most);
        rlim_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        ::getrlimit(RLIMIT_AS, &m_before);
        const rlimit lower{pages * static_cast<rlim_t>(::getpagesize()), m_before.rlim_max};
        ::setrlimit(RLIMIT_AS, &lower);
        // Uses up free blocks, so that they cannot serve later allocations.
        for (void* block = nullptr; m_blocks.size() < most && (block = std::malloc(1'000'000)) != nullptr;) {
            m_blocks.push_back(block);
        }
    }
    ~MemoryLimit()
    {
        ::setrlimit(RLIMIT_AS, &m_before);
        for (void* block : m_blocks) {
            std::free(block);
        }
    }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

private:
    rlimit m_before = {};
    std::vector<void*> m_blocks;
};

} // namespace morlaine::test
