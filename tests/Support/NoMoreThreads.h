#pragma once

#include <cstddef>

#include <pthread.h>

namespace morlaine::test {

/// During its lifetime, no thread can be started: the default stack is larger than the address space.
class NoMoreThreads {
public:
    NoMoreThreads()
    {
        ::pthread_getattr_default_np(&m_before);
        pthread_attr_t tooLarge = {};
        ::pthread_getattr_default_np(&tooLarge);
        ::pthread_attr_setstacksize(&tooLarge, std::size_t{1} << 50);
        ::pthread_setattr_default_np(&tooLarge);
        ::pthread_attr_destroy(&tooLarge);
    }
    ~NoMoreThreads()
    {
        ::pthread_setattr_default_np(&m_before);
        ::pthread_attr_destroy(&m_before);
    }
    NoMoreThreads(const NoMoreThreads&) = delete;
    NoMoreThreads& operator=(const NoMoreThreads&) = delete;

private:
    pthread_attr_t m_before = {};
};

} // namespace morlaine::test
