#include "Core/Models/FileNodeJson.h"
#include "Fuzz/RoundTrip.h"

/// Whatever a cached tree's file holds, reading it ends in a tree or an error, and a tree that was read survives being
/// written and read again.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    morlaine::fuzz::checkRoundTrip(data, size, morlaine::decodeFileNode, [](const auto& tree, QIODevice& sink) {
        return morlaine::encodeFileNode(tree, sink);
    });
    return 0;
}
