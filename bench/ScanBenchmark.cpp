#include "ScanBenchmark.h"

#include "Core/Scanner/DiskWalk.h"
#include "Measurements.h"
#include "Platform/Background.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace morlaine::bench {

namespace {

constexpr int pairsOfRuns = 9;

void runDu(const std::string& tree)
{
    std::vector<std::string> words{"du", "-sx", tree};
    std::vector<char*> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int failure = ::posix_spawnp(&process, "du", &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        throw std::runtime_error("du cannot be started");
    }
    int status = 0;
    if (::waitpid(process, &status, 0) != process || status != 0) {
        throw std::runtime_error("du has failed, so that its time says nothing");
    }
}

/// On a thread of its own. Threads that end give back what they have freed.
FileNode scanAsTheProgramDoes(const std::string& tree)
{
    std::optional<FileNode> root;
    if (Background::start("scan", Background::Priority::userInitiated, [&] { root = scan(tree); })) {
        throw std::runtime_error("no thread can be started");
    }
    if (!Background::waitForAll(std::chrono::minutes(10)).empty() || !root) {
        throw std::runtime_error("the scan does not end");
    }
    return *std::move(root);
}

/// The first scan of a process takes memory once, for code and threads, that belongs to no node.
void scanSomethingSmall()
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "morlaine-bench-small";
    std::filesystem::create_directories(folder / "folder");
    (void)scanAsTheProgramDoes(folder.native());
    std::filesystem::remove_all(folder);
}

/// Must run first in the process: it would reuse memory that an earlier tree has freed.
void scanMemory(benchmark::State& state, const std::string& tree)
{
    scanSomethingSmall();
    for (auto _ : state) {
        forgetPeak();
        const std::int64_t before = residentBytes();
        const FileNode root = scanAsTheProgramDoes(tree);
        const std::int64_t growth = residentBytes() - before;
        const std::int64_t peak = peakResidentBytes() - before;
        const std::int64_t nodes = nodesIn(root);
        state.counters["bytes_per_node"] = static_cast<double>(growth) / static_cast<double>(nodes);
        state.counters["scan_peak_bytes_per_node"] = static_cast<double>(peak) / static_cast<double>(nodes);
        state.counters["nodes"] = static_cast<double>(nodes);
    }
}

/// Drops the system's caches of disks. False if that is not allowed.
bool dropCaches()
{
    ::sync();
    std::ofstream file("/proc/sys/vm/drop_caches");
    file << 3;
    return static_cast<bool>(file.flush());
}

enum class Caches { warm, cold };

/// Alternates between the two, so that other load on the machine affects both.
void scanBesideDu(benchmark::State& state, const std::string& tree, Caches caches)
{
    const bool isCold = caches == Caches::cold;
    if (isCold && !dropCaches()) {
        state.SkipWithError("skipped: this user may not drop the system's caches");
        return;
    }
    std::vector<double> scanSeconds;
    std::vector<double> duSeconds;
    std::int64_t nodes = 0;
    runDu(tree);
    const auto forget = [isCold] {
        if (isCold) {
            (void)dropCaches();
        }
    };
    for (auto _ : state) {
        std::optional<FileNode> root;
        forget();
        scanSeconds.push_back(secondsOf([&] { root = scan(tree); }));
        forget();
        duSeconds.push_back(secondsOf([&] { runDu(tree); }));
        state.SetIterationTime(scanSeconds.back());
        nodes = nodesIn(*root);
    }
    state.SetItemsProcessed(state.iterations() * nodes);
    state.counters[isCold ? "cold_du_ratio" : "du_ratio"] = median(scanSeconds) / median(duSeconds);
    state.counters["scan_ms"] = median(scanSeconds) * 1e3;
    state.counters["du_ms"] = median(duSeconds) * 1e3;
}

} // namespace

FileNode scan(const std::string& tree)
{
    const std::shared_ptr<const FileSystem> fileSystem = FileSystem::native();
    DiskWalk walk(
        fileSystem, {}, [](const auto&...) {}, fileSystem->usefulReaders());
    return walk.scan(FileUrl::fromPath(tree));
}

std::int64_t nodesIn(const FileNode& root)
{
    return root.fileCount() + root.directoryCount();
}

void registerScanBenchmarks(const std::string& tree)
{
    benchmark::RegisterBenchmark("scan/memory", scanMemory, tree)->Iterations(1)->Unit(benchmark::kMillisecond);
    for (const auto& [name, caches] :
         {std::pair("scan/besides_du", Caches::warm), {"scan/besides_du_cold", Caches::cold}}) {
        benchmark::RegisterBenchmark(name, scanBesideDu, tree, caches)
            ->Iterations(pairsOfRuns)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace morlaine::bench
