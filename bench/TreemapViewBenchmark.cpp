#include "TreemapViewBenchmark.h"

#include "Core/Models/TreeBuilder.h"
#include "Core/Treemap/TreemapEngine.h"
#include "Measurements.h"
#include "ScanBenchmark.h"
#include "UI/Views/Treemap/FolderGrounds.h"
#include "UI/Views/Treemap/TreemapCanvas.h"
#include "UI/Views/Treemap/TreemapLabels.h"
#include "UI/Views/Treemap/TreemapTiles.h"

#include <QCoreApplication>
#include <QImage>
#include <QPalette>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <thread>
#include <vector>

namespace morlaine::bench {

namespace {

constexpr QSize window(1600, 1000);
constexpr int runs = 21;
constexpr int hoverMoves = 1'000;

/// Sizes vary by a factor of sixteen; all categories occur.
void addFile(TreeBuilder& builder, std::mt19937& generator)
{
    const auto size = static_cast<std::int64_t>(std::exp2(16 + 4.0 * static_cast<double>(generator()) / 0x1p32));
    const FileCategory category = FileCategory::allCases[generator() % FileCategory::allCases.size()];
    builder.addComponent({Uuid::random(), size, false, category}, "some file " + std::to_string(generator() % 10'000));
}

/// `widths` children at each level; the last level are files.
void addContents(TreeBuilder& builder, const std::vector<int>& widths, std::size_t level, std::mt19937& generator)
{
    const auto folder = builder.nodes().size() - 1;
    builder.openList();
    std::int64_t total = 0;
    for (int index = 0; index < widths[level]; ++index) {
        const auto child = builder.nodes().size();
        if (level + 1 == widths.size()) {
            addFile(builder, generator);
        } else {
            builder.addComponent({Uuid::random(), 0, true, FileCategory::other}, std::to_string(index));
            addContents(builder, widths, level + 1, generator);
        }
        total += builder.nodes().sizes[child];
    }
    builder.setSize(folder, total);
    builder.closeList();
}

FileNode folderOfFolders(const std::vector<int>& widths, std::mt19937& generator)
{
    TreeBuilder builder(TreeBuilder::Source::measured);
    builder.add({Uuid::random(), 0, true, FileCategory::other}, "/files", "files");
    addContents(builder, widths, 0, generator);
    return builder.finish();
}

void layOut(const FileNode& root, const QSize& size, TreemapLayout& layout)
{
    TreemapEngine::layOut(root, {0, 0, static_cast<double>(size.width()), static_cast<double>(size.height())}, layout);
}

std::shared_ptr<const TreemapLayout> fiftyThousandFiles()
{
    std::mt19937 generator(20'010'101);
    const auto layout = std::make_shared<TreemapLayout>();
    layOut(folderOfFolders({25, 10, 200}, generator), window, *layout);
    return layout;
}

QImage paint(const std::shared_ptr<const TreemapLayout>& rects, const QSize& size)
{
    QImage image =
        TreemapTiles::start(
            {rects, {}, TreemapTiles::ground(QPalette()), size, 1, std::make_shared<const FolderGrounds>(*rects)})
            ->paint()
            .value();
    TreemapLabels::paint(image, *rects);
    return image;
}

void basePaint(benchmark::State& state)
{
    const auto rects = fiftyThousandFiles();
    std::vector<double> seconds;
    for (auto _ : state) {
        QImage picture;
        seconds.push_back(secondsOf([&] { picture = paint(rects, window); }));
        state.SetIterationTime(seconds.back());
        benchmark::DoNotOptimize(picture);
    }
    state.counters["rectangles"] = static_cast<double>(rects->size());
    state.counters["base_paint_ms"] = median(seconds) * 1e3;
}

/// Finds the rectangle under the pointer, and repaints the old and the new place of the mark. Most moves reach another
/// file.
void hoverPaint(benchmark::State& state)
{
    const auto layout = fiftyThousandFiles();
    TreemapCanvas canvas;
    canvas.resize(window);
    canvas.showLayout(layout, {});
    canvas.show();
    QCoreApplication::processEvents();
    canvas.repaint();
    QCoreApplication::processEvents();
    std::mt19937 generator(20'010'101);
    std::vector<double> seconds;
    std::vector<double> searching;
    for (auto _ : state) {
        const QPointF point(static_cast<double>(generator() % 1600), static_cast<double>(generator() % 1000));
        std::optional<std::size_t> found;
        searching.push_back(secondsOf([&] { found = layout->hitTest(point.x(), point.y()); }));
        const double painting = secondsOf([&] {
            canvas.setHoverMark(found ? std::optional(layout->items()[*found].rect) : std::nullopt);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
            QCoreApplication::processEvents();
        });
        seconds.push_back(searching.back() + painting);
        state.SetIterationTime(seconds.back());
    }
    state.counters["hit_test_ms"] = median(searching) * 1e3;
    state.counters["hover_paint_ms"] = median(seconds) * 1e3;
    state.counters["slowest_hover_ms"] = *std::ranges::max_element(seconds) * 1e3;
}

/// Like dragging a divider of the window.
void resizeStep(benchmark::State& state, const std::string& tree)
{
    const FileNode root = scan(tree);
    const auto layout = std::make_shared<TreemapLayout>();
    std::vector<double> seconds;
    std::size_t rectangles = 0;
    int step = 0;
    for (auto _ : state) {
        const QSize size = window - QSize(0, ++step % 2);
        while (layout->isBeingRead()) { // by a helper at its last tile
            std::this_thread::yield();
        }
        seconds.push_back(secondsOf([&] {
            layOut(root, size, *layout);
            rectangles = layout->size();
            benchmark::DoNotOptimize(paint(layout, size));
        }));
        state.SetIterationTime(seconds.back());
    }
    state.counters["rectangles"] = static_cast<double>(rectangles);
    state.counters["resize_step_ms"] = median(seconds) * 1e3;
}

template <typename Run>
void registerRuns(const char* name, int iterations, const std::function<void()>& startApplication, Run run)
{
    benchmark::RegisterBenchmark(name,
                                 [startApplication, run](benchmark::State& state) {
                                     startApplication();
                                     run(state);
                                 })
        ->Iterations(iterations)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace

void registerTreemapViewBenchmarks(const std::string& tree, const std::function<void()>& startApplication)
{
    registerRuns("treemap_view/base", runs, startApplication, basePaint);
    registerRuns("treemap_view/hover", hoverMoves, startApplication, hoverPaint);
    registerRuns("treemap_view/resize", runs, startApplication,
                 [tree](benchmark::State& state) { resizeStep(state, tree); });
}

} // namespace morlaine::bench
