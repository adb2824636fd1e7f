#include "App/MorlaineApp.h"

int main(int argc, char* argv[])
{
    morlaine::MorlaineApp app(argc, argv);
    return app.run();
}
