#include "SearchBenchmark.h"

#include "Core/Models/CategorySizes.h"
#include "GeneratedTree.h"
#include "Measurements.h"
#include "NoDesktop.h"
#include "ScanBenchmark.h"
#include "Services/Search/SearchIndex.h"
#include "UI/Views/State/MainViewModel.h"

#include <QCoreApplication>
#include <QStringList>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace morlaine::bench {

namespace {

constexpr int million = 1'000'000;
constexpr int repetitions = 7;

using MakeTree = FileNode (*)(const std::string& tree);

FileNode generated(const std::string& /*tree*/)
{
    return generatedTree(million);
}

double millions(const FileNode& root)
{
    return static_cast<double>(nodesIn(root)) / million;
}

/// The main thread's work for a new tree of `nodes` nodes, besides painting, and for destroying it.
void showAndRelease(benchmark::State& state, int nodes)
{
    std::vector<double> showSeconds;
    std::vector<double> releaseSeconds;
    double size = 0;
    for (auto _ : state) {
        std::optional<FileNode> root = generatedTree(nodes);
        size = millions(*root);
        std::optional<SearchIndex> index;
        showSeconds.push_back(secondsOf([&] {
            index.emplace(*root);
            benchmark::DoNotOptimize(categorySizes(*root));
        }));
        index.reset();
        releaseSeconds.push_back(secondsOf([&] { root.reset(); }));
        state.SetIterationTime(releaseSeconds.back());
    }
    state.counters["index_and_sums_ms"] = median(showSeconds) * 1e3;
    state.counters["release_ms_per_million"] = median(releaseSeconds) * 1e3 / size;
    state.counters["nodes"] = size * million;
}

/// The work of a keystroke. Keystrokes follow one another as in typing.
struct Keystroke {
    QString text;
    std::optional<FileCategory> category;
};

std::vector<Keystroke> keystrokes(const FileNode& root)
{
    const QString partOfEveryPath = QString::fromUtf8(root.name().data(), static_cast<qsizetype>(root.name().size()));
    return {{QStringLiteral("hits nothing"), {}},
            {partOfEveryPath, {}},
            {QStringLiteral("e"), {}},
            {QStringLiteral("e/a"), {}},
            {QStringLiteral("e/hits nothing"), {}},
            {QString(), FileCategory::other}};
}

void search(benchmark::State& state, MakeTree makeTree, const std::string& tree)
{
    const FileNode root = makeTree(tree);
    const SearchIndex index(root);
    const std::vector<Keystroke> keys = keystrokes(root);
    std::vector<std::vector<double>> seconds(keys.size());
    SearchResults results;
    NodeIDSet ids;
    for (auto _ : state) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            seconds[i].push_back(secondsOf([&] {
                results = index.search(keys[i].text, keys[i].category, std::nullopt, std::nullopt);
                ids = NodeIDSet(results);
            }));
        }
    }
    double worst = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const double perMillion = median(seconds[i]) * 1e3 / millions(root);
        state.counters["ms_" + keys[i].text.toStdString() + (keys[i].category ? "category" : "")] = perMillion;
        worst = std::max(worst, perMillion);
    }
    state.counters["keystroke_ms_per_million"] = worst;
    state.counters["nodes"] = static_cast<double>(nodesIn(root));
}

/// A model without a desktop, with a store in its own folder.
class ScanSession {
public:
    ScanSession()
    {
        std::filesystem::remove_all(m_folder);
        m_store.emplace(FileUrl::fromPath(m_folder.native()));
        m_model.emplace(MainViewModel::Environment{FileSystem::native(), std::make_shared<NoVolumes>(),
                                                   UserFolders{FileUrl::fromPath("/"), {}, {}, {}}, nullptr, *m_store});
    }
    ~ScanSession() { std::filesystem::remove_all(m_folder); }
    ScanSession(const ScanSession&) = delete;
    ScanSession& operator=(const ScanSession&) = delete;

    /// Scans to the end. Returns the seconds that the main thread was busy with the result.
    [[nodiscard]] double secondsToFinish(const std::string& tree)
    {
        m_model->scan(FileUrl::fromPath(tree));
        for (double seconds = 0;;) {
            seconds = secondsOf([] { QCoreApplication::processEvents(); });
            if (m_model->currentRootNode()) {
                return seconds;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    [[nodiscard]] FileNode root() const { return *m_model->currentRootNode(); }

private:
    const std::filesystem::path m_folder = std::filesystem::temp_directory_path() / "morlaine-bench-scans";
    std::optional<PersistenceManager> m_store;
    std::optional<MainViewModel> m_model;
};

void finishScan(benchmark::State& state, const std::string& tree)
{
    std::vector<double> seconds;
    double size = 0;
    for (auto _ : state) {
        ScanSession session;
        seconds.push_back(session.secondsToFinish(tree));
        state.SetIterationTime(seconds.back());
        size = millions(session.root());
    }
    state.counters["finish_ms_per_million"] = median(seconds) * 1e3 / size;
    state.counters["nodes"] = size * million;
}

} // namespace

void registerSearchBenchmarks(const std::string& tree, const std::function<void()>& startApplication)
{
    const struct {
        const char* suffix;
        MakeTree makeTree;
    } trees[] = {{"generated", generated}, {"tree", scan}};
    for (const auto& [suffix, makeTree] : trees) {
        benchmark::RegisterBenchmark((std::string("search/") + suffix).c_str(), search, makeTree, tree)
            ->Iterations(repetitions)
            ->Unit(benchmark::kMillisecond);
    }
    for (const int nodes : {million, 10 * million}) {
        benchmark::RegisterBenchmark(("tree/" + std::to_string(nodes)).c_str(), showAndRelease, nodes)
            ->Iterations(3)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("scan/finish",
                                 [=](benchmark::State& state) {
                                     startApplication();
                                     finishScan(state, tree);
                                 })
        ->Iterations(3)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace morlaine::bench
