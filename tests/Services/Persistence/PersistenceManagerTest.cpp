#include "Services/Persistence/PersistenceManager.h"

#include "Platform/Background.h"
#include "Platform/PrivateFiles.h"
#include "Support/Gate.h"
#include "Support/TemporaryFolder.h"
#include "Support/TreeText.h"
#include "Support/Wait.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <thread>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

/// Called on the thread that flushes a file, with the file's descriptor.
static std::function<void(int)> onFsync; // NOLINT(cert-err58-cpp)

/// Replaces the system's function in this program.
extern "C" int fsync(int descriptor) // NOLINT(readability-inconsistent-declaration-parameter-name)
{
    if (onFsync) {
        onFsync(descriptor);
    }
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

namespace morlaine {

namespace fs = std::filesystem;
using test::treeFromText;

class PersistenceManagerTest : public testing::Test {
protected:
    PersistenceManagerTest() { reopen(); }

    void reopen() { m_store.reset(new PersistenceManager(m_folder.url("sh\xE1re"))); }

    [[nodiscard]] fs::path appFolder() const { return m_folder.path() / "sh\xE1re/com.morlaine.Morlaine"; }
    [[nodiscard]] fs::path index() const { return appFolder() / "history.json"; }
    [[nodiscard]] fs::path scans() const { return appFolder() / "Scans"; }
    [[nodiscard]] fs::path treeFile(const HistoricalScan& scan) const
    {
        return scans() / (scan.id.toString() + ".json");
    }

    [[nodiscard]] HistoricalScan save(const std::string& name)
    {
        const FileNode root = treeFromText(name + "/\n  a 1\n  b 2", "/scanned");
        return m_store->saveScan(root, 2, 1);
    }
    [[nodiscard]] HistoricalScan saveToTheEnd(const std::string& name)
    {
        const HistoricalScan scan = save(name);
        EXPECT_TRUE(test::waitUntil([&] { return fs::exists(treeFile(scan)); }));
        return scan;
    }
    [[nodiscard]] std::vector<std::string> paths() const
    {
        std::vector<std::string> paths;
        for (const HistoricalScan& scan : m_store->loadHistory()) {
            paths.push_back(scan.path);
        }
        return paths;
    }

    static void write(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
    [[nodiscard]] static std::string read(const fs::path& path)
    {
        std::stringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
    [[nodiscard]] static std::vector<std::string> namesIn(const fs::path& folder)
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }
    [[nodiscard]] static mode_t permissions(const fs::path& path)
    {
        struct stat status = {};
        ::stat(path.c_str(), &status);
        return status.st_mode & 0777;
    }
    [[nodiscard]] static std::string entry(const std::string& path, const std::string& date)
    {
        return R"({"id":")" + Uuid::random().toString() + R"(","path":")" + path + R"(","date":)" + date +
               R"(,"totalSize":1,"filesCount":2,"directoriesCount":3})";
    }

    test::TemporaryFolder m_folder;
    std::unique_ptr<PersistenceManager> m_store;
};

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST_F(PersistenceManagerTest, SavesAnEntryAtOnceAndTheTreeSoon)
{
    const Date before = Date::now();
    const FileNode root = treeFromText("root/\n  sub/\n    b.txt 20\n  a 1", "/scanned");
    std::atomic<int> treesFlushed = 0;
    onFsync = [&treesFlushed](int file) {
        const fs::path path = fs::read_symlink("/proc/self/fd/" + std::to_string(file));
        treesFlushed += path.parent_path().filename() == "Scans" ? 1 : 0;
    };
    const HistoricalScan scan = m_store->saveScan(root, 2, 7);
    EXPECT_THAT(m_store->loadHistory(), ElementsAre(scan)) << "the date reads back to the same instant";
    EXPECT_EQ(scan.path, "/scanned/root");
    EXPECT_EQ(scan.directoriesCount, 7);
    EXPECT_GE(scan.date, before);
    EXPECT_LE(scan.date, Date::now());
    ASSERT_TRUE(test::waitUntil([&] { return m_store->loadScanTree(scan.id).has_value(); }));
    EXPECT_EQ(m_store->loadScanTree(scan.id), root) << "ids included";
    EXPECT_EQ(read(treeFile(scan)).find('\n'), std::string::npos) << "compact";
    EXPECT_EQ(treesFlushed, 1) << "before it was renamed";
    EXPECT_TRUE(Background::waitForAll(test::longEnough).empty());
    onFsync = nullptr;
}

TEST_F(PersistenceManagerTest, WritesTheListIndentedForThisUserAlone)
{
    const HistoricalScan scan = saveToTheEnd("with \"quotes\"");
    const std::string text = read(index());
    const std::size_t number = text.find("\"date\": ") + 8;
    EXPECT_EQ(std::stod(text.substr(number)), scan.date.secondsSince2001);
    EXPECT_EQ(text, "[\n  {\n    \"id\": \"" + scan.id.toString() +
                        "\",\n    \"path\": \"/scanned/with \\\"quotes\\\"\",\n    \"date\": " +
                        text.substr(number, text.find(',', number) - number) +
                        ",\n    \"totalSize\": 3,\n    \"filesCount\": 2,\n    \"directoriesCount\": 1\n  }\n]");
    for (const fs::path& path : {appFolder(), scans(), index(), treeFile(scan)}) {
        EXPECT_EQ(permissions(path), fs::is_directory(path) ? 0700U : 0600U) << path;
    }
    EXPECT_THAT(namesIn(appFolder()), UnorderedElementsAre("Scans", "history.json"));
    EXPECT_THAT(namesIn(scans()), ElementsAre(scan.id.toString() + ".json")) << "no temporary file stays";
    (void)m_store->saveScan(FileNode(FileUrl::fromPath("/caf\xE9"), "x", 0, true, FileCategory::other, std::nullopt), 0,
                            1);
    EXPECT_THAT(paths(), ElementsAre("/caf\uFFFD", scan.path)) << "a path that is not valid text loses nothing";
}

TEST_F(PersistenceManagerTest, ListsNewestFirstAndWritesTheNewestLast)
{
    write(index(), "[" + entry("/old", "1.5") + "," + entry("/same1", "700000000") + "," +
                       entry("/new", "700000001.25") + "," + entry("/same2", "700000000.0") + "," +
                       entry("/ancient", "-1e9") + "," + entry("/far", "1e300") + "," +
                       entry("/farther", "1" + std::string(305, '0')) + "," + entry("/zero", "0e302") + "]");
    EXPECT_THAT(paths(), ElementsAre("/farther", "/far", "/new", "/same1", "/same2", "/old", "/zero", "/ancient"));
    (void)save("now");
    const std::string text = read(index());
    EXPECT_LT(text.find("/ancient"), text.find("/scanned/now"));
    EXPECT_NE(text.find("\"date\": 700000000.0,"), std::string::npos) << "a number with a fraction";
}

TEST_F(PersistenceManagerTest, TakesABrokenListForAnEmptyOne)
{
    const std::string good = entry("/x", "1");
    const auto without = [&good](const std::string& key) {
        std::string text = good;
        const std::size_t start = text.find('"' + key);
        return text.erase(start, std::min(text.find(',', start) + 1, text.size() - 1) - start);
    };
    for (const std::string& inner :
         {std::string("1"), std::string("[]"), good + "]", good + ",{}", without("id"), without("path"),
          without("date"), without("totalSize"), entry("/x", "\"now\""), entry("/x", "null"), entry("/x", "1e999"),
          entry("\xFF", "1"), entry("/x", "1,\"filesCount\":1.5")}) {
        const std::string text = "[" + inner + "]";
        write(index(), text);
        EXPECT_THAT(paths(), IsEmpty()) << text;
        EXPECT_EQ(read(index()), text) << "reading changes nothing";
    }
    for (const std::string& text : {std::string(), std::string("{}"), "[" + good}) {
        write(index(), text);
        EXPECT_THAT(paths(), IsEmpty()) << text;
    }
    (void)save("first");
    EXPECT_THAT(paths(), ElementsAre("/scanned/first"));
    write(index(), "[" + entry("/x", "1,\"new\":[{\"id\":[]}]") + "]\n");
    EXPECT_THAT(paths(), ElementsAre("/x")) << "unknown members are passed over";
}

TEST_F(PersistenceManagerTest, DeletesEveryEntryOfAnIdAndItsTree)
{
    const HistoricalScan one = saveToTheEnd("one");
    const HistoricalScan two = saveToTheEnd("two");
    m_store->deleteScan(one.id);
    EXPECT_THAT(paths(), ElementsAre("/scanned/two"));
    EXPECT_FALSE(fs::exists(treeFile(one)));
    EXPECT_FALSE(m_store->loadScanTree(one.id));
    EXPECT_TRUE(m_store->loadScanTree(two.id));

    const std::string twice = entry("/twice", "5");
    write(index(), "[" + entry("/old", "1") + "," + twice + "," + entry("/new", "9") + "," + twice + "]");
    m_store->deleteScan(Uuid::random());
    const std::string text = read(index());
    EXPECT_LT(text.find("/new"), text.find("/old")) << "an unknown id rewrites the list, newest first";
    m_store->deleteScan(m_store->loadHistory()[1].id);
    EXPECT_THAT(paths(), ElementsAre("/new", "/old"));
}

TEST_F(PersistenceManagerTest, ClearsWhateverLiesInItsFolder)
{
    (void)saveToTheEnd("one");
    write(scans() / ".hidden", "x");
    write(scans() / "foreign.txt", "x");
    fs::create_directories(scans() / "folder/inner");
    write(scans() / "folder/inner/file", "x");
    write(m_folder.path() / "outside", "x");
    fs::create_symlink(m_folder.path(), scans() / "link");
    m_store->clearAllHistory();
    EXPECT_EQ(read(index()), "[]");
    EXPECT_THAT(namesIn(scans()), IsEmpty());
    EXPECT_TRUE(fs::exists(m_folder.path() / "outside")) << "links are removed, not followed";
    fs::remove(scans());
    m_store->clearAllHistory();
    EXPECT_THAT(paths(), IsEmpty());
}

TEST_F(PersistenceManagerTest, RemovesWhatAKilledProgramLeftAndNothingElse)
{
    const std::vector<std::string> foreign = {"history.json.Ab3xY9", "notes.json.before", ".morlaine-x.tmp",
                                              ".morlaine-history.json-Ab3xY9.temp"};
    for (const fs::path& folder : {appFolder(), scans()}) {
        for (const std::string& name : foreign) {
            write(folder / name, "x");
            fs::last_write_time(folder / name, fs::file_time_type::clock::now() - std::chrono::hours(25));
        }
        write(folder / ".morlaine-history.json-Ab3xY9.tmp", "[]");
    }
    write(index(), "[" + entry("/kept", "1") + "]");
    const fs::path target = scans() / "tree.json";
    auto atWork = std::make_unique<AtomicFile>(FileUrl::fromPath(target.native()));
    reopen();
    EXPECT_EQ(namesIn(scans()).size(), foreign.size() + 1);
    EXPECT_TRUE(atWork->commit());
    EXPECT_TRUE(fs::remove(target));
    EXPECT_THAT(namesIn(scans()), testing::UnorderedElementsAreArray(foreign));
    EXPECT_TRUE(test::waitUntil([&] { return namesIn(appFolder()).size() == foreign.size() + 2; }));
    EXPECT_THAT(paths(), ElementsAre("/kept")) << "rather than an older list";
}

TEST_F(PersistenceManagerTest, DeletesATreeThatIsStillBeingWritten)
{
    const HistoricalScan scan = save("one");
    m_store->deleteScan(scan.id);
    EXPECT_THAT(namesIn(scans()), IsEmpty());

    AtomicFile file(FileUrl::fromPath(treeFile(scan).native()));
    EXPECT_EQ(file.write("x", 1), 1);
    m_store->deleteScan(scan.id);
    EXPECT_LT(file.write("x", 1), 0) << "the writer stops early";
    EXPECT_FALSE(file.commit());
    EXPECT_THAT(namesIn(scans()), IsEmpty());
}

TEST_F(PersistenceManagerTest, FlushesTheListBehindTheCaller)
{
    (void)saveToTheEnd("one");
    const auto isTidy = [this] { return namesIn(appFolder()).size() == 2; };
    ASSERT_TRUE(test::waitUntil(isTidy));
    ASSERT_TRUE(Background::waitForAll(test::longEnough).empty());
    const auto gate = std::make_shared<test::Gate>();
    std::atomic<int> waits = 0;
    std::atomic<int> foldersFlushed = 0;
    std::atomic<int> foldersFirst = 0;
    onFsync = [&, gate, caller = std::this_thread::get_id()](int file) {
        std::this_thread::get_id() == caller ? void(++waits) : gate->pass();
        thread_local bool isFileFlushed = false;
        if (fs::is_directory("/proc/self/fd/" + std::to_string(file))) {
            ++foldersFlushed;
            foldersFirst += isFileFlushed ? 0 : 1;
        }
        isFileFlushed = true;
    };
    (void)save("two");
    m_store->deleteScan(save("three").id);
    EXPECT_EQ(waits, 0);
    EXPECT_THAT(paths(), ElementsAre("/scanned/two", "/scanned/one"));

    write(index(), ""); // as after a crash before the flush
    reopen();
    EXPECT_THAT(paths(), ElementsAre("/scanned/three", "/scanned/two", "/scanned/one")) << "the list before";
    gate->open();
    EXPECT_TRUE(test::waitUntil(isTidy));
    EXPECT_EQ(paths().size(), 3U);
    EXPECT_TRUE(Background::waitForAll(test::longEnough).empty());
    EXPECT_EQ(foldersFlushed, 4) << "for two saves, a deletion and the repair";
    EXPECT_EQ(foldersFirst, 0) << "before their files";
    onFsync = nullptr;
}

using PersistenceManagerDeathTest = PersistenceManagerTest;

TEST_F(PersistenceManagerDeathTest, LeavesNoTemporaryFileWhenASignalEndsTheProgram)
{
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        EXPECT_EXIT(
            {
                std::signal(signal, SIG_DFL); // whatever started the tests may ignore it
                removeTemporaryFilesOnSignals();
                const AtomicFile file(m_folder.url("target"));
                ::kill(::getpid(), signal);
                std::this_thread::sleep_for(std::chrono::seconds(60));
            },
            testing::KilledBySignal(signal), "");
    }
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("sh\xE1re"));
    EXPECT_EXIT(
        {
            std::signal(SIGHUP, SIG_IGN);
            removeTemporaryFilesOnSignals();
            ::kill(::getpid(), SIGHUP);
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            std::_Exit(7);
        },
        testing::ExitedWithCode(7), "");
}

} // namespace
} // namespace morlaine
