#include "Core/Scanner/DiskScanner.h"

#include "Platform/Background.h"
#include "Support/FakeFileSystem.h"
#include "Support/Gate.h"
#include "Support/NoMoreThreads.h"
#include "Support/TreeText.h"
#include "Support/Wait.h"

#include <QCoreApplication>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace morlaine {
namespace {

using test::FakeFileSystem;
using test::Gate;

std::string stateOf(const DiskScanner& scanner)
{
    return std::string(scanner.isScanning() ? "scanning" : "idle") +
           (scanner.scanResult() ? " result:" + std::string(scanner.scanResult()->name()) : "") +
           (scanner.errorMessage() ? " error:" + scanner.errorMessage()->toStdString() : "");
}

class DiskScannerTest : public testing::Test {
protected:
    DiskScannerTest()
    {
        for (const std::string root : {"/r", "/s"}) {
            m_fileSystem->addFile(root + "/a", 3);
            m_fileSystem->addFile(root + "/held/b", 4);
            m_fileSystem->addFolder(root + "/last\xFF");
        }
        m_fileSystem->onListing = [first = m_firstGate, second = m_secondGate](const std::string& path) {
            if (path == "/r/held") {
                first.pass();
            } else if (path == "/s/held") {
                second.pass();
            }
        };
        m_scanner = std::make_unique<DiskScanner>(m_fileSystem);
        QObject::connect(m_scanner.get(), &DiskScanner::objectWillChange, m_scanner.get(),
                         [this] { m_states.push_back(stateOf(*m_scanner)); });
    }
    ~DiskScannerTest() override
    {
        m_firstGate.open();
        m_secondGate.open();
    }

    void start(const char* path) { m_scanner->startScan(FileUrl::fromPath(path)); }
    [[nodiscard]] std::string state() const { return stateOf(*m_scanner); }
    [[nodiscard]] bool waitForState(const std::string& expected)
    {
        return test::waitUntil([&] { return state() == expected; });
    }
    [[nodiscard]] static bool hasWalkEnded() { return Background::waitForAll(test::longEnough).empty(); }
    /// The announced states without repetitions. Each was the state before a change.
    [[nodiscard]] std::vector<std::string> history() const
    {
        std::vector<std::string> distinct;
        for (const std::string& state : m_states) {
            if (distinct.empty() || distinct.back() != state) {
                distinct.push_back(state);
            }
        }
        return distinct;
    }

    const Gate m_firstGate;
    const Gate m_secondGate;
    std::shared_ptr<FakeFileSystem> m_fileSystem = std::make_shared<FakeFileSystem>();
    std::unique_ptr<DiskScanner> m_scanner;
    std::vector<std::string> m_states;
};

TEST_F(DiskScannerTest, PublishesTheResultBeforeItStops)
{
    m_firstGate.open();
    start("/r");
    EXPECT_EQ(state(), "scanning");
    EXPECT_EQ(m_scanner->currentPath(), QStringLiteral("/r"));
    ASSERT_TRUE(waitForState("idle result:r"));
    EXPECT_EQ(test::textOfTree(*m_scanner->scanResult()), "r/\n  held/\n    b 4\n  a 3\n  last\uFFFD/\n");
    EXPECT_EQ(history(), (std::vector<std::string>{"idle", "scanning", "scanning result:r", "idle result:r"}))
        << "each change is announced before it happens";
}

TEST_F(DiskScannerTest, ReportsProgressWhileItScans)
{
    m_fileSystem->addFolder("/r/held/slow");
    m_fileSystem->onListing = [gate = m_firstGate](const std::string& path) {
        if (path == "/r/held/slow") {
            std::this_thread::sleep_for(std::chrono::milliseconds(120));
        } else if (path == "/r/last\xFF") {
            gate.pass();
        }
    };
    start("/r");
    EXPECT_TRUE(test::waitUntil([&] { return m_scanner->elapsedTime() > 0.15; })) << "the clock ticks by itself";
    EXPECT_TRUE(test::waitUntil([&] { return m_scanner->currentPath() == QStringLiteral("/r/last\uFFFD"); }));
    EXPECT_EQ(m_scanner->scannedFilesCount(), 2);
    EXPECT_EQ(m_scanner->scannedDirsCount(), 4);
    EXPECT_EQ(m_scanner->totalSize(), 7);
    m_firstGate.open();
    ASSERT_TRUE(waitForState("idle result:r"));
    start("/s");
    EXPECT_EQ(m_scanner->scannedFilesCount() + m_scanner->scannedDirsCount() + m_scanner->totalSize(), 0);
    EXPECT_EQ(m_scanner->elapsedTime(), 0.0);
    EXPECT_EQ(m_scanner->currentPath(), QStringLiteral("/s"));
    EXPECT_EQ(state(), "scanning") << "the result of the scan before is gone";
}

TEST_F(DiskScannerTest, StopsAtOnceWhenCancelledAndSaysSoLater)
{
    start("/r");
    m_firstGate.waitForArrival();
    m_scanner->cancelScan();
    EXPECT_EQ(state(), "idle") << "neither a result nor a message yet";
    const double elapsed = m_scanner->elapsedTime();
    QTest::qWait(150);
    EXPECT_EQ(state(), "idle");
    EXPECT_EQ(m_scanner->elapsedTime(), elapsed) << "the clock has stopped";
    m_firstGate.open();
    ASSERT_TRUE(waitForState("idle error:Scan cancelled by user."));
    EXPECT_EQ(history(), (std::vector<std::string>{"idle", "scanning", "idle"}));
    m_scanner->cancelScan();
    EXPECT_EQ(state(), "idle error:Scan cancelled by user.") << "with nothing to cancel, nothing changes";
}

TEST_F(DiskScannerTest, LetsAnEarlierScanEndTheProgressOfTheNewest)
{
    start("/r");
    m_firstGate.waitForArrival();
    start("/s");
    m_secondGate.waitForArrival();
    EXPECT_EQ(state(), "scanning");
    m_firstGate.open();
    ASSERT_TRUE(waitForState("idle error:Scan cancelled by user."));
    m_secondGate.open();
    EXPECT_TRUE(waitForState("idle result:s error:Scan cancelled by user."))
        << "the newest scan still delivers its tree, and the message stays";
}

TEST_F(DiskScannerTest, PublishesAResultThatCancellingCameTooLateFor)
{
    m_fileSystem->onListing = [](const std::string& path) {
        std::this_thread::sleep_for(
            std::chrono::milliseconds(path == "/r/held" ? 120 : 0)); // makes a progress report due
    };
    start("/r");
    ASSERT_TRUE(hasWalkEnded()); // without returning to the event loop
    m_scanner->cancelScan();
    EXPECT_EQ(state(), "idle");
    EXPECT_TRUE(test::waitUntil([&] { return state() != "idle"; }));
    EXPECT_EQ(state(), "idle result:r");
    EXPECT_EQ(m_scanner->scannedFilesCount(), 0) << "progress that comes after cancelling is not shown";
}

TEST_F(DiskScannerTest, KeepsTheFinalTimeWhenATickIsUnderWay)
{
    start("/r");
    QTimer::singleShot(std::chrono::milliseconds(10), Qt::PreciseTimer, m_scanner.get(), [this] {
        m_firstGate.open();
        EXPECT_TRUE(hasWalkEnded());
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(150)); // makes both timers due, so that the clock ticks next
    ASSERT_TRUE(waitForState("idle result:r"));
    QCoreApplication::processEvents();
    EXPECT_EQ(std::ranges::count(m_states, "idle result:r"), 1) << "the time is set once";
}

TEST_F(DiskScannerTest, SaysWhyAScanFailed)
{
    m_fileSystem->onListing = [](const std::string& path) {
        if (path == "/r/held") {
            throw std::runtime_error("the disk is on fire");
        }
        if (path == "/s/held") {
            throw std::bad_alloc();
        }
    };
    start("/r");
    ASSERT_TRUE(waitForState("idle error:the disk is on fire"));
    EXPECT_EQ(history(), (std::vector<std::string>{"idle", "scanning", "idle"}));
    start("/s");
    EXPECT_EQ(state(), "scanning") << "the message of the scan before is gone";
    EXPECT_TRUE(waitForState("idle error:There is not enough memory to scan this folder."));
}

TEST_F(DiskScannerTest, FailsInOrderWhereNoThreadIsLeft)
{
    {
        const test::NoMoreThreads limit;
        start("/r");
    }
    EXPECT_EQ(state(), "scanning");
    EXPECT_TRUE(test::waitUntil([&] { return m_scanner->errorMessage().has_value(); }));
    EXPECT_FALSE(m_scanner->isScanning());
    EXPECT_THAT(m_fileSystem->listings(), testing::IsEmpty());
}

TEST_F(DiskScannerTest, MayBeDestroyedWhileItScans)
{
    start("/r");
    m_firstGate.waitForArrival();
    m_scanner.reset();
    m_firstGate.open();
    EXPECT_TRUE(hasWalkEnded()) << "by itself";
    QCoreApplication::processEvents();
    EXPECT_EQ(m_fileSystem->listings().back(), "/r/held");
}

} // namespace
} // namespace morlaine
