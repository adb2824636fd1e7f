#include "Fuzz/RoundTrip.h"
#include "Services/Persistence/HistoricalScan.h"

/// The same for the list of scans.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    morlaine::fuzz::checkRoundTrip(data, size, morlaine::decodeHistory, [](const auto& history, QIODevice& sink) {
        return morlaine::encodeHistory(history, sink);
    });
    return 0;
}
