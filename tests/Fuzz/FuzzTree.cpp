#include "Core/Models/FileNodeJson.h"
#include "Core/Models/FileNodeReaders.h"
#include "Fuzz/RoundTrip.h"

/// Reading any bytes yields a tree or an error. A tree that was read is the same after writing and reading it again. A
/// tree that the fast reader accepts is the same from the other reader.
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
