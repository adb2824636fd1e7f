#include "Core/Models/FileNodeJson.h"
#include "Core/Models/FileNodeReaders.h"
#include "Fuzz/RoundTrip.h"

/// Whatever a cached tree's file holds, reading it ends in a tree or an error, and a tree that was read survives being
/// written and read again. What the quick reader takes, the other one takes for the same tree.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    morlaine::fuzz::checkRoundTrip(data, size, morlaine::decodeFileNode, [](const auto& tree, QIODevice& sink) {
        return morlaine::encodeFileNode(tree, sink);
    });
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (const auto quick = morlaine::fuzz::decoded(bytes, morlaine::readExactForm)) {
        const auto thorough = morlaine::fuzz::decoded(bytes, morlaine::readAnyForm);
        if (thorough.index() != 0 || std::get<0>(thorough) != *quick) {
            std::abort();
        }
    }
    return 0;
}
