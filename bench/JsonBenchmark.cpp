#include "JsonBenchmark.h"

#include "Core/Models/FileNodeJson.h"
#include "Measurements.h"
#include "ScanBenchmark.h"

#include <QBuffer>

#include <benchmark/benchmark.h>

#include <optional>
#include <vector>

namespace morlaine::bench {

namespace {

QByteArray encoded(const FileNode& root)
{
    QByteArray text;
    QBuffer buffer(&text);
    buffer.open(QIODevice::WriteOnly);
    if (!encodeFileNode(root, buffer)) {
        text.clear();
    }
    return text;
}

void writeJson(benchmark::State& state, const std::string& tree)
{
    const FileNode root = scan(tree);
    qsizetype bytes = 0;
    for (auto _ : state) {
        bytes = encoded(root).size();
    }
    state.SetBytesProcessed(state.iterations() * bytes);
    state.SetItemsProcessed(state.iterations() * nodesIn(root));
}

void readJson(benchmark::State& state, const std::string& tree)
{
    const FileNode root = scan(tree);
    QByteArray text = encoded(root);
    std::vector<double> seconds;
    for (auto _ : state) {
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        std::optional<std::variant<FileNode, DecodeError>> result;
        seconds.push_back(secondsOf([&] { result = decodeFileNode(buffer); }));
        state.SetIterationTime(seconds.back());
        if (std::holds_alternative<DecodeError>(*result)) {
            state.SkipWithError("the tree could not be read back");
            return;
        }
    }
    const std::int64_t nodes = nodesIn(root);
    state.SetBytesProcessed(state.iterations() * text.size());
    state.SetItemsProcessed(state.iterations() * nodes);
    state.counters["read_seconds_per_million"] = median(seconds) * 1e6 / static_cast<double>(nodes);
}

} // namespace

void registerJsonBenchmarks(const std::string& tree)
{
    benchmark::RegisterBenchmark("json/write", writeJson, tree)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("json/read", readJson, tree)->UseManualTime()->Unit(benchmark::kMillisecond);
}

} // namespace morlaine::bench
