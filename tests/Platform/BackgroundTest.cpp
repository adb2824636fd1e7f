#include "Platform/Background.h"

#include "Support/Gate.h"
#include "Support/NoMoreThreads.h"
#include "Support/Wait.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <stdexcept>

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

namespace morlaine {
namespace {

using namespace std::chrono_literals;
using Priority = Background::Priority;
using test::longEnough;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST(BackgroundTest, WaitsForWhatItKnowsByNameUntilTheBound)
{
    const test::Gate gate;
    const auto held = std::make_shared<int>(1);
    EXPECT_FALSE(Background::start("first", Priority::userInitiated, [gate, held] { gate.pass(); }));
    runInBackground("second", [gate, held] { gate.pass(); });
    EXPECT_THAT(Background::waitForAll(0s), UnorderedElementsAre("first", "second"));
    EXPECT_THAT(Background::waitForAll(longEnough), IsEmpty()) << "work that hangs is waited for once";
    gate.open();

    // Work may start further work.
    runInBackground("outer", [held] { runInBackground("inner", [held] {}); });
    EXPECT_THAT(Background::waitForAll(longEnough), IsEmpty());
    while (held.use_count() > 1) { // held by the first two pieces of work, which are not waited for any more
    }
}

TEST(BackgroundTest, KeepsAnExceptionInsideTheWork)
{
    runInBackground("throws", [] { throw std::runtime_error("inside"); });
    EXPECT_THAT(Background::waitForAll(longEnough), IsEmpty());
}

TEST(BackgroundTest, RunsAtItsPriorityAndUnderItsName)
{
    const auto niceness = [] { return ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid())); };
    std::atomic<int> ofUser = -100;
    std::atomic<int> ofBackground = -100;
    std::string name(16, '\0');
    ASSERT_FALSE(Background::start("a name of twenty one", Priority::userInitiated, [&] {
        ofUser = niceness();
        ::pthread_getname_np(::pthread_self(), name.data(), name.size());
    }));
    runInBackground("background", [&] { ofBackground = niceness(); });
    ASSERT_THAT(Background::waitForAll(longEnough), IsEmpty());
    EXPECT_EQ(ofUser, niceness());
    EXPECT_EQ(ofBackground, 19);
    EXPECT_STREQ(name.c_str(), "a name of twent");
}

TEST(BackgroundTest, SaysThatAThreadCannotBeStarted)
{
    const test::NoMoreThreads limit;
    bool hasRun = false;
    EXPECT_TRUE(Background::start("never", Priority::userInitiated, [&hasRun] { hasRun = true; }));
    EXPECT_THAT(Background::waitForAll(longEnough), IsEmpty());
    EXPECT_FALSE(hasRun);
}

} // namespace
} // namespace morlaine
