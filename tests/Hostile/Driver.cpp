// Does one thing with the program's own code, for checks that run it under faults. What it finds out it prints.

#include "Core/Scanner/DiskWalk.h"
#include "Platform/Background.h"
#include "Services/Persistence/PersistenceManager.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <new>
#include <stop_token>
#include <string>
#include <thread>

namespace {

using namespace morlaine;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

[[noreturn]] void complain(const char* what, const FileNode& node)
{
    std::printf("%s: %s\n", what, node.url().path().c_str());
    std::exit(1);
}

/// Every node lies in its folder, and so does every name of a storm, which begins with an "s".
void checkPlace(const FileNode& child, const std::string& folder)
{
    const std::string path = child.url().path();
    if (!path.starts_with(folder + "/s") || path.rfind('/') != folder.size()) {
        complain("outside", child);
    }
}

/// A folder has the size of its children, the largest of which comes first.
void check(const FileNode& root, bool isStorm)
{
    for (Tree::Position position = 0; position != root.tree().endOf(0); ++position) {
        const FileNode node = FileNode::at(root.tree(), position);
        std::int64_t sum = 0;
        std::int64_t last = INT64_MAX;
        for (const FileNode& child : node.childrenOrNone()) {
            if (isStorm) {
                checkPlace(child, node.url().path());
            }
            if (child.size() > last || child.size() < 0) {
                complain("out of order", child);
            }
            sum += last = child.size();
        }
        if (node.isDirectory() && sum != node.size()) {
            complain("wrong sum", node);
        }
    }
}

FileNode scan(const FileUrl& url, std::size_t readers, const std::stop_token& stop = {})
{
    return DiskWalk(
               FileSystem::native(), stop, [](const auto&...) {}, readers)
        .scan(url);
}

int scanAgain(const FileUrl& url, std::size_t readers, std::chrono::milliseconds time)
{
    const auto end = Clock::now() + time;
    int rounds = 0;
    do {
        const FileNode root = scan(url, readers);
        check(root, time > 0ms);
        if (++rounds == 1) {
            std::printf("%lld %lld %lld\n", static_cast<long long>(root.fileCount()),
                        static_cast<long long>(root.directoryCount()), static_cast<long long>(root.size()));
        }
    } while (Clock::now() < end);
    std::printf("%d\n", rounds);
    return 0;
}

int cancelAfter(const FileUrl& url, std::size_t readers, std::chrono::milliseconds time)
try {
    std::stop_source stop;
    const std::jthread canceller([&] {
        std::this_thread::sleep_for(time);
        stop.request_stop();
    });
    (void)scan(url, readers, stop.get_token());
    return 1;
} catch (const ScanCancelled&) {
    return 0;
}

int store(const std::string& command, const char* argument, int count)
{
    PersistenceManager& store = PersistenceManager::shared();
    if (command == "save") {
        const FileNode root = scan(FileUrl::fromPath(argument), 0);
        for (int i = 0; i < count; ++i) {
            std::printf("%s\n", store.saveScan(root, root.fileCount(), root.directoryCount()).id.toString().c_str());
            std::fflush(stdout);
        }
    } else if (command == "delete") {
        store.deleteScan(Uuid::fromText(argument).value());
    } else {
        for (const HistoricalScan& entry : store.loadHistory()) {
            const auto tree = store.loadScanTree(entry.id);
            std::printf("%s %lld\n", entry.id.toString().c_str(), static_cast<long long>(tree ? tree->size() : -1));
        }
    }
    return Background::waitForAll(60s).empty() ? 0 : 1;
}

} // namespace

/// scan PATH READERS MILLISECONDS: scans until the time is over. Prints files, folders and bytes, then the scans.
/// cancel PATH READERS MILLISECONDS: scans, and cancels after the time.
/// save PATH COUNT: saves scans of the folder, each id printed. delete ID. load: prints ids and sizes.
int main(int argc, char** argv)
try {
    const std::string command = argc > 1 ? argv[1] : "";
    const char* const argument = argc > 2 ? argv[2] : "/";
    const int number = argc > 3 ? std::atoi(argv[3]) : 1;
    const std::chrono::milliseconds time(argc > 4 ? std::atoi(argv[4]) : 0);
    const auto readers = static_cast<std::size_t>(number);
    const FileUrl url = FileUrl::fromPath(argument);
    return command == "scan"     ? scanAgain(url, readers, time)
           : command == "cancel" ? cancelAfter(url, readers, time)
                                 : store(command, argument, number);
} catch (const std::bad_alloc&) {
    std::puts("out of memory");
    return 3;
}
