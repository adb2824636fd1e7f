#include "App/MorlaineApp.h"
#include "Platform/PrivateFiles.h"

#include <cstdlib>

namespace {

int runMorlaine(int& argc, char** argv)
{
    morlaine::MorlaineApp app(argc, argv);
    return app.run();
}

} // namespace

int main(int argc, char* argv[])
{
    morlaine::removeTemporaryFilesOnSignals();
    // Threads may still be under way, some of them waiting for a share or a bus that will never answer. Nothing waits
    // for them, and nothing that they use is taken down under them.
    std::_Exit(runMorlaine(argc, argv));
}
