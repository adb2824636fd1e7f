#include "Measurements.h"

#include <algorithm>
#include <fstream>
#include <string>

#include <unistd.h>

namespace morlaine::bench {

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

std::int64_t residentBytes()
{
    std::ifstream statm("/proc/self/statm");
    std::int64_t allPages = 0;
    std::int64_t residentPages = 0;
    statm >> allPages >> residentPages;
    return residentPages * ::sysconf(_SC_PAGESIZE);
}

std::int64_t peakResidentBytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            std::int64_t kibibytes = 0;
            status >> kibibytes;
            return kibibytes * 1024;
        }
    }
    return 0;
}

void forgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}

} // namespace morlaine::bench
