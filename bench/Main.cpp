#include "GeneratedTree.h"
#include "GrowthBenchmark.h"
#include "JsonBenchmark.h"
#include "ScanBenchmark.h"
#include "SearchBenchmark.h"
#include "TreemapBenchmark.h"
#include "TreemapViewBenchmark.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view treeFlag = "--tree=";

/// Removes the flag from the arguments. Without it, a tree is generated beside the program.
std::string treeFromArguments(int& argc, char** argv)
{
    const auto isTreeFlag = [](std::string_view argument) { return argument.starts_with(treeFlag); };
    char** const flag = std::find_if(argv + 1, argv + argc, isTreeFlag);
    if (flag != argv + argc) {
        std::string tree(std::string_view(*flag).substr(treeFlag.size()));
        std::rotate(flag, flag + 1, argv + argc);
        --argc;
        if (!std::filesystem::is_directory(tree)) {
            throw std::runtime_error(tree + " is no folder");
        }
        return tree;
    }
    const std::filesystem::path tree =
        std::filesystem::read_symlink("/proc/self/exe").parent_path() / "bench-data" / "tree";
    morlaine::bench::makeGeneratedTree(tree);
    return tree.native();
}

} // namespace

int main(int argc, char** argv)
try {
    const std::string tree = treeFromArguments(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    morlaine::bench::registerScanBenchmarks(tree);
    morlaine::bench::registerJsonBenchmarks();
    morlaine::bench::registerTreemapBenchmarks(tree);
    morlaine::bench::registerGrowthBenchmarks();

    // Only for benchmarks that need it: an application's memory and work would distort the other measurements.
    std::optional<QApplication> application;
    const auto startApplication = [&] {
        if (!application) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            application.emplace(argc, argv);
        }
    };
    morlaine::bench::registerSearchBenchmarks(tree, startApplication);
    morlaine::bench::registerTreemapViewBenchmarks(tree, startApplication);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
}
