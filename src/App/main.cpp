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
    // Background threads may still run, and some may wait for a share or a bus that never answers. The program does not
    // wait for them and destroys nothing that they use.
    std::_Exit(runMorlaine(argc, argv));
}
