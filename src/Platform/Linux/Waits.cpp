#include "Platform/Waits.h"

#include <sys/resource.h>

namespace morlaine {

std::int64_t waitsOfThisThread() noexcept
{
    rusage usage = {};
    ::getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

} // namespace morlaine
