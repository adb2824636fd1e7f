#include "GrowthBenchmark.h"

#include "Core/Scanner/DiskWalk.h"
#include "Core/Treemap/TreemapEngine.h"
#include "JsonBenchmark.h"
#include "Measurements.h"
#include "Platform/FileSystem.h"
#include "ScanBenchmark.h"
#include "Services/Search/SearchIndex.h"

#include <QString>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace morlaine::bench {

namespace {

constexpr double million = 1e6;
constexpr int repetitions = 3;

/// Well mixed numbers that depend on `seed` only.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}

    [[nodiscard]] std::uint64_t next()
    {
        m_state += 0x9e37'79b9'7f4a'7c15;
        const std::uint64_t mixed = (m_state ^ m_state >> 30) * 0xbf58'476d'1ce4'e5b9;
        return mixed ^ mixed >> 27;
    }

private:
    std::uint64_t m_state;
};

ResourceValues valuesOf(bool isFolder, std::int64_t size)
{
    ResourceValues values;
    values.volumeIdentifier = 1;
    values.isDirectory = isFolder;
    if (!isFolder) {
        values.fileSize = values.totalAllocatedSize = values.allocatedSize = size;
    }
    return values;
}

/// A folder that exists only while it is listed. What it contains follows from its number of files and its seed, which
/// its name ends with.
class ImaginaryFolder final : public Folder {
public:
    ImaginaryFolder(std::uint64_t files, std::uint64_t seed) : m_files(files), m_seed(seed) {}

    [[nodiscard]] bool list(FolderContents& contents, const std::stop_token& stop, const ListingPace& pace) override
    {
        constexpr std::uint64_t mostFiles = 60;
        constexpr std::uint64_t subfolders = 40;
        Dice dice(m_seed);
        const std::uint64_t here = m_files <= mostFiles ? m_files : dice.next() % mostFiles;
        for (std::uint64_t i = 0; i < here; ++i) {
            const auto size = static_cast<std::int64_t>(4096 * (1 + dice.next() % 64));
            contents.append(wordOf(dice) + std::to_string(i) + (dice.next() % 2 == 0 ? ".jpg" : ".txt"),
                            valuesOf(false, size));
        }
        std::uint64_t rest = m_files - here;
        for (std::uint64_t left = subfolders; rest > 0; --left) {
            const std::uint64_t share = left == 1 ? rest : std::min(rest, rest / left + dice.next() % 5);
            rest -= share;
            contents.append(wordOf(dice) + '-' + std::to_string(share) + '-' + std::to_string(dice.next()),
                            valuesOf(true, 0));
        }
        return !stop.stop_requested() && (!pace || pace(contents));
    }

    [[nodiscard]] std::unique_ptr<Folder> folder(std::string_view name) override
    {
        const std::string text(name);
        const std::size_t seedAt = text.rfind('-');
        const std::size_t filesAt = text.rfind('-', seedAt - 1);
        return std::make_unique<ImaginaryFolder>(std::stoull(text.substr(filesAt + 1)),
                                                 std::stoull(text.substr(seedAt + 1)));
    }

private:
    static std::string wordOf(Dice& dice)
    {
        std::string word;
        for (std::uint64_t bits = dice.next(), length = 4 + bits % 8; word.size() < length; bits >>= 5) {
            word += static_cast<char>('a' + bits % 26);
        }
        return word;
    }

    const std::uint64_t m_files;
    const std::uint64_t m_seed;
};

class ImaginaryDisk final : public FileSystem {
public:
    explicit ImaginaryDisk(std::uint64_t files) : m_files(files) {}

    [[nodiscard]] std::optional<ResourceValues> resourceValues(const FileUrl& /*url*/) const override
    {
        return valuesOf(true, 0);
    }
    [[nodiscard]] std::optional<std::uint64_t> volumeIdentifier(const FileUrl& /*url*/) const override { return 1; }
    [[nodiscard]] std::unique_ptr<Folder> folder(const FileUrl& /*url*/) const override
    {
        return std::make_unique<ImaginaryFolder>(m_files, 1);
    }
    [[nodiscard]] FileUrl resolvingSymlinks(const FileUrl& url) const override { return url; }

private:
    const std::uint64_t m_files;
};

void growth(benchmark::State& state, std::uint64_t files)
{
    for (auto _ : state) {
        forgetPeak();
        const std::int64_t before = residentBytes();
        std::optional<FileNode> root;
        const double scanning = secondsOf([&] {
            DiskWalk walk(std::make_shared<ImaginaryDisk>(files), {}, [](const auto&...) {});
            root = walk.scan(FileUrl::fromPath("/imaginary"));
        });
        const auto nodes = static_cast<double>(nodesIn(*root));
        if (root->fileCount() != static_cast<std::int64_t>(files)) {
            throw std::runtime_error("the scan has not found every file");
        }
        state.counters["nodes"] = nodes;
        state.counters["bytes_per_node"] = static_cast<double>(residentBytes() - before) / nodes;
        state.counters["scan_peak_bytes_per_node"] = static_cast<double>(peakResidentBytes() - before) / nodes;
        state.counters["scan_seconds_per_million"] = scanning / nodes * million;

        const SearchIndex index(*root);
        std::vector<double> keys;
        std::vector<double> layouts;
        TreemapLayout layout;
        for (int i = 0; i < repetitions; ++i) {
            keys.push_back(secondsOf([&] {
                benchmark::DoNotOptimize(NodeIDSet(index.search(QStringLiteral("e"), {}, std::nullopt, std::nullopt)));
            }));
            layouts.push_back(secondsOf([&] { TreemapEngine::layOut(*root, {0, 0, 1600, 1000}, layout); }));
        }
        state.counters["keystroke_ms_per_million"] = median(keys) * 1e3 / nodes * million;
        state.counters["rectangles"] = static_cast<double>(layout.size());
        state.counters["layout_ms"] = median(layouts) * 1e3;

        bool isWritten = false;
        std::optional<FileNode> read;
        const double writing = secondsOf([&] { isWritten = writeCache(*root); });
        const double reading = secondsOf([&] { read = readCache(); });
        if (!isWritten || !read || nodesIn(*read) != nodesIn(*root)) {
            throw std::runtime_error("the tree could not be written and read back");
        }
        removeCache();
        state.counters["write_seconds_per_million"] = writing / nodes * million;
        state.counters["read_seconds_per_million"] = reading / nodes * million;
    }
}

} // namespace

void registerGrowthBenchmarks()
{
    for (const std::uint64_t millions : {1U, 3U, 10U}) {
        const std::uint64_t files = millions * 1'000'000;
        benchmark::RegisterBenchmark(("growth/" + std::to_string(files)).c_str(), growth, files)
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace morlaine::bench
