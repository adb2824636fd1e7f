#include "TreemapBenchmark.h"

#include "Core/Models/TreeBuilder.h"
#include "Core/Treemap/TreemapEngine.h"
#include "Measurements.h"
#include "ScanBenchmark.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <functional>
#include <random>
#include <vector>

namespace morlaine::bench {

namespace {

constexpr Rect window{0, 0, 1600, 1000};
constexpr int runs = 21;

/// A folder of files of 1 byte to 16 MB, largest first, evenly distributed on a logarithmic scale.
FileNode wideFolder(int fileCount)
{
    std::mt19937 generator(20'010'101);
    std::vector<std::int64_t> sizes(static_cast<std::size_t>(fileCount));
    for (std::int64_t& size : sizes) {
        size = static_cast<std::int64_t>(std::exp2(24.0 * static_cast<double>(generator()) / 0x1p32));
    }
    std::ranges::sort(sizes, std::greater());
    TreeBuilder builder(TreeBuilder::Source::given);
    const auto root = builder.add({Uuid::random(), 0, true, FileCategory::other}, "/wide", "wide");
    builder.openList();
    std::int64_t total = 0;
    for (const std::int64_t size : sizes) {
        builder.addComponent({Uuid::random(), size, false, FileCategory::other},
                             "file" + std::to_string(builder.nodes().size()));
        total += size;
    }
    builder.setSize(root, total);
    builder.closeList();
    return builder.finish();
}

/// Lays out the same folder repeatedly, without reading the rectangles. `counter` is the median in milliseconds.
void layOut(benchmark::State& state, const FileNode& folder, const char* counter)
{
    std::vector<double> seconds;
    std::size_t rectangles = 0;
    for (auto _ : state) {
        std::vector<TreemapRect> layout;
        seconds.push_back(secondsOf([&] { layout = TreemapEngine::computeLayout(folder, window); }));
        state.SetIterationTime(seconds.back());
        rectangles = layout.size();
    }
    if (rectangles == 0) {
        state.SkipWithError("nothing in this tree takes up room; --tree= names another");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rectangles));
    state.counters["rectangles"] = static_cast<double>(rectangles);
    state.counters[counter] = median(seconds) * 1e3;
}

void wide(benchmark::State& state)
{
    layOut(state, wideFolder(100'000), "wide_layout_ms");
}

void wholeTree(benchmark::State& state, const std::string& tree)
{
    layOut(state, scan(tree), "tree_layout_ms");
}

/// Nanoseconds of processor time per file, which other programs disturb less than wall-clock time.
double nanosecondsPerFile(const FileNode& folder)
{
    const std::clock_t start = std::clock();
    const std::vector<TreemapRect> layout = TreemapEngine::computeLayout(folder, window);
    const std::clock_t end = std::clock();
    return static_cast<double>(end - start) * 1e9 / CLOCKS_PER_SEC / static_cast<double>(layout.size());
}

void growth(benchmark::State& state)
{
    const FileNode few = wideFolder(10'000);
    const FileNode many = wideFolder(1'000'000);
    std::vector<double> fewNanoseconds;
    std::vector<double> manyNanoseconds;
    for (auto _ : state) {
        fewNanoseconds.push_back(nanosecondsPerFile(few));
        manyNanoseconds.push_back(nanosecondsPerFile(many));
    }
    state.counters["ns_per_file_of_10k"] = median(fewNanoseconds);
    state.counters["ns_per_file_of_1m"] = median(manyNanoseconds);
    state.counters["growth_ratio"] = median(manyNanoseconds) / median(fewNanoseconds);
}

} // namespace

void registerTreemapBenchmarks(const std::string& tree)
{
    benchmark::RegisterBenchmark("treemap/wide", wide)
        ->Iterations(runs)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("treemap/growth", growth)->Iterations(runs)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("treemap/tree", wholeTree, tree)
        ->Iterations(runs)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace morlaine::bench
