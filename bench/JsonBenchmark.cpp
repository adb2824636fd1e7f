#include "JsonBenchmark.h"

#include "Core/Models/FileNodeJson.h"
#include "GeneratedTree.h"
#include "Measurements.h"
#include "Platform/PrivateFiles.h"
#include "ScanBenchmark.h"

#include <QFile>

#include <benchmark/benchmark.h>
#include <rapidjson/filereadstream.h>
#include <rapidjson/reader.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace morlaine::bench {

namespace {

constexpr int million = 1'000'000;

std::filesystem::path cacheFile()
{
    return std::filesystem::temp_directory_path() / "morlaine-bench-cache.json";
}

/// The lower bound for a reader: a parse that keeps nothing.
double secondsToParse()
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(cacheFile().c_str(), "rb"), std::fclose);
    std::vector<char> buffer(std::size_t{64} * 1024);
    rapidjson::FileReadStream stream(file.get(), buffer.data(), buffer.size());
    rapidjson::Reader reader;
    rapidjson::BaseReaderHandler<> handler;
    return secondsOf([&] { (void)reader.Parse<rapidjson::kParseIterativeFlag>(stream, handler); });
}

void writeJson(benchmark::State& state)
{
    const FileNode root = generatedTree(million);
    std::int64_t extra = 0;
    for (auto _ : state) {
        forgetPeak();
        const std::int64_t before = residentBytes();
        if (!writeCache(root)) {
            state.SkipWithError("the cache cannot be written");
            return;
        }
        extra = std::max(extra, peakResidentBytes() - before);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(cacheFile())));
    state.counters["write_extra_mib"] = static_cast<double>(extra) / (1024.0 * 1024.0);
    state.counters["nodes"] = static_cast<double>(nodesIn(root));
    removeCache();
}

void readJson(benchmark::State& state)
{
    const FileNode root = generatedTree(million);
    if (!writeCache(root)) {
        state.SkipWithError("the cache cannot be written");
        return;
    }
    std::vector<double> seconds;
    std::vector<double> parseSeconds;
    for (auto _ : state) {
        std::optional<FileNode> read;
        parseSeconds.push_back(secondsToParse());
        seconds.push_back(secondsOf([&read] { read = readCache(); }));
        state.SetIterationTime(seconds.back());
        if (!read || nodesIn(*read) != nodesIn(root)) {
            state.SkipWithError("the tree could not be read back");
            return;
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(cacheFile())));
    state.counters["read_seconds_per_million"] = median(seconds) * million / static_cast<double>(nodesIn(root));
    state.counters["read_to_parse_ratio"] = median(seconds) / median(parseSeconds);
    removeCache();
}

} // namespace

bool writeCache(const FileNode& root)
{
    AtomicFile file(FileUrl::fromPath(cacheFile().native()));
    return file.isOpen() && encodeFileNode(root, file) && file.commit();
}

std::optional<FileNode> readCache()
{
    QFile file(cacheFile());
    file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    auto result = decodeFileNode(file);
    return std::holds_alternative<FileNode>(result) ? std::optional(std::get<FileNode>(result)) : std::nullopt;
}

void removeCache()
{
    std::filesystem::remove(cacheFile());
}

void registerJsonBenchmarks()
{
    benchmark::RegisterBenchmark("cache/write", writeJson)->UseRealTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("cache/read", readJson)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
}

} // namespace morlaine::bench
