#include "WindowBenchmark.h"

#include "GeneratedTree.h"
#include "Measurements.h"
#include "NoDesktop.h"
#include "Platform/Workspace.h"
#include "UI/Views/Treemap/TreemapCanvas.h"
#include "UI/Views/Window/MainView.h"
#include "WatchedApplication.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

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

constexpr int nodes = 300'000;
constexpr QSize windowSize(1600, 1000);
constexpr auto settlingTime = std::chrono::milliseconds(300);

/// Runs the event loop until nothing has been left to do for a while.
void settle()
{
    const auto end = Clock::now() + settlingTime;
    while (Clock::now() < end) {
        QCoreApplication::processEvents();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

/// The window with an earlier scan to open, in a folder of its own.
class WindowSession {
public:
    WindowSession()
    {
        std::filesystem::remove_all(m_folder);
        m_store.emplace(FileUrl::fromPath(m_folder.native()));
        const FileNode root = generatedTree(nodes);
        m_scan = m_store->saveScan(root, root.fileCount(), root.directoryCount());
        while (!m_store->loadScanTree(m_scan->id)) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        m_window.emplace(MainViewModel::Environment{FileSystem::native(), std::make_shared<NoVolumes>(),
                                                    UserFolders{FileUrl::fromPath("/"), {}, {}, {}},
                                                    Workspace::native(), *m_store},
                         std::make_unique<NoChooser>());
        m_window->resize(windowSize);
        m_window->show();
        m_window->activateWindow();
        settle();
    }
    ~WindowSession()
    {
        m_window.reset();
        std::filesystem::remove_all(m_folder);
    }
    WindowSession(const WindowSession&) = delete;
    WindowSession& operator=(const WindowSession&) = delete;

    [[nodiscard]] MainViewModel& model() { return m_window->viewModel(); }

    void open() { model().loadHistoricalScan(*m_scan); }

    template <typename Widget>
    [[nodiscard]] Widget& find()
    {
        return *m_window->findChild<Widget*>();
    }

private:
    const std::filesystem::path m_folder = std::filesystem::temp_directory_path() / "morlaine-bench-window";
    std::optional<PersistenceManager> m_store;
    std::optional<HistoricalScan> m_scan;
    std::optional<MainView> m_window;
};

/// What a user does after the tree has come: looks, moves the pointer over the treemap, zooms in and out.
void openAndUse(WindowSession& session)
{
    settle();
    auto& canvas = session.find<TreemapCanvas>();
    for (int step = 0; step < 200; ++step) {
        const QPointF point(canvas.width() * step / 200.0, canvas.height() * (step % 20) / 20.0);
        QMouseEvent move(QEvent::MouseMove, point, canvas.mapToGlobal(point), Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(&canvas, &move);
        QCoreApplication::processEvents();
    }
    for (const FileNode& child : session.model().currentRootNode()->childrenOrNone()) {
        session.model().zoomIn(child);
        QCoreApplication::processEvents();
        session.model().zoomOut();
        QCoreApplication::processEvents();
    }
    settle();
}

/// Reading the tree from its file is left out: it is a budget of its own.
void stalls(benchmark::State& state, WatchedApplication& application)
{
    WindowSession session;
    std::vector<double> seconds;
    for (auto _ : state) {
        session.open();
        (void)application.takeLongestStall();
        openAndUse(session);
        seconds.push_back(application.takeLongestStall());
        state.SetIterationTime(seconds.back());
    }
    state.counters["longest_stall_ms"] = *std::ranges::max_element(seconds) * 1e3;
    state.counters["nodes"] = static_cast<double>(session.model().scanner().scannedFilesCount());
}

/// From the key to the panel and the treemap both repainted.
void keystrokes(benchmark::State& state)
{
    WindowSession session;
    session.open();
    settle();
    auto& field = session.find<QLineEdit>();
    std::vector<double> seconds;
    const QString typed = QStringLiteral("e1.t");
    for (auto _ : state) {
        for (const QChar letter : typed) {
            seconds.push_back(secondsOf([&] {
                QKeyEvent press(QEvent::KeyPress, letter.unicode(), {}, letter);
                QCoreApplication::sendEvent(&field, &press);
                QCoreApplication::processEvents();
            }));
        }
        field.clear();
        settle();
        state.SetIterationTime(median(seconds));
    }
    state.counters["keystroke_to_paint_ms"] = median(seconds) * 1e3;
    state.counters["slowest_ms"] = *std::ranges::max_element(seconds) * 1e3;
}

} // namespace

void registerWindowBenchmarks(const std::function<WatchedApplication&()>& startApplication)
{
    benchmark::RegisterBenchmark("window/stalls", [=](benchmark::State& state) { stalls(state, startApplication()); })
        ->Iterations(3)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("window/keystroke",
                                 [=](benchmark::State& state) {
                                     (void)startApplication();
                                     keystrokes(state);
                                 })
        ->Iterations(5)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace morlaine::bench
