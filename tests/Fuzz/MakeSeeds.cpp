#include "Core/Models/FileNodeJson.h"
#include "Services/Persistence/HistoricalScan.h"
#include "Support/TreeText.h"

#include <QFile>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace morlaine;

template <typename Encode>
bool writeSeed(const std::filesystem::path& path, Encode encode)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && encode(file);
}

} // namespace

/// Writes a seed corpus for each fuzzer into the given folder: `tree` and `history`.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: morlaine_fuzz_seeds FOLDER\n", stderr);
        return 1;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder / "tree");
    std::filesystem::create_directories(folder / "history");

    const std::vector<FileNode> trees = {
        test::treeFromText("one.txt 1"),
        test::treeFromText("absent!"),
        test::treeFromText("a/\n  b/\n    c.mp4 9\n    ü %.zip 5\n  d/\n  e 0", "/x y"),
        test::chainOfFolders(20),
    };
    bool isWritten = true;
    for (std::size_t i = 0; i < trees.size(); ++i) {
        isWritten &= writeSeed(folder / "tree" / std::to_string(i),
                               [&](QIODevice& sink) { return encodeFileNode(trees[i], sink); });
    }
    std::vector<HistoricalScan> history;
    for (int i = 0; i < 3; ++i) {
        isWritten &= writeSeed(folder / "history" / std::to_string(i),
                               [&](QIODevice& sink) { return encodeHistory(history, sink); });
        history.push_back({Uuid::random(), "/home/\"x\"/é", {-1.5e9 * i + 0.1}, i * 1'000'000'007LL, i, 2});
    }
    return isWritten ? 0 : 1;
}
