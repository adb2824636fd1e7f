#pragma once

#include <fstream>

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

namespace morlaine::test {

/// As long as this lives, the process gets no more address space than it has and `room` bytes.
class MemoryLimit {
public:
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    static constexpr bool isPossible = false; // the sanitizers need address space of their own
#else
    static constexpr bool isPossible = true;
#endif

    explicit MemoryLimit(rlim_t room)
    {
        ::malloc_trim(0); // what was freed before must not serve
        rlim_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        ::getrlimit(RLIMIT_AS, &m_before);
        const rlimit lower{pages * static_cast<rlim_t>(::getpagesize()) + room, m_before.rlim_max};
        ::setrlimit(RLIMIT_AS, &lower);
    }
    ~MemoryLimit()
    {
        ::setrlimit(RLIMIT_AS, &m_before);
    }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

private:
    rlimit m_before = {};
};

} // namespace morlaine::test
