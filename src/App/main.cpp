#include "App/MorlaineApp.h"
#include "Platform/Memory.h"
#include "Platform/PrivateFiles.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace {

/// Of address space, for the window and the threads. With less, some library or other ends the program without a word
/// or waits for ever for a thread that could not be started.
constexpr std::size_t leastMemory = std::size_t{512} << 20U;

int runMorlaine(int& argc, char** argv)
{
    morlaine::MorlaineApp app(argc, argv);
    return app.run();
}

} // namespace

int main(int argc, char* argv[])
{
    if (!morlaine::canReserve(leastMemory)) {
        std::fputs("Morlaine cannot start: there is not enough memory.\n", stderr);
        return EXIT_FAILURE;
    }
    morlaine::giveBackLargeBlocks();
    morlaine::removeTemporaryFilesOnSignals();
    // Background threads may still run, and some may wait for a share or a bus that never answers. The program does not
    // wait for them and destroys nothing that they use.
    std::_Exit(runMorlaine(argc, argv));
}
