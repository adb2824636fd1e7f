#include "Platform/Memory.h"

#include <sys/mman.h>

namespace morlaine {

bool canReserve(std::size_t bytes)
{
    void* const place = ::mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return place != MAP_FAILED && ::munmap(place, bytes) == 0;
}

} // namespace morlaine
