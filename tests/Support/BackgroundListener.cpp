#include "Support/BackgroundListener.h"

#include "Platform/Background.h"
#include "Support/Wait.h"

#include <gtest/gtest.h>

namespace morlaine::test {

namespace {

class BackgroundListener final : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo& /*test*/) override
    {
        for (const std::string& name : Background::waitForAll(longEnough)) {
            ADD_FAILURE() << "left running in the background: " << name;
        }
    }
};

} // namespace

void waitForBackgroundAfterEachTest()
{
    testing::UnitTest::GetInstance()->listeners().Append(new BackgroundListener); // takes ownership
}

} // namespace morlaine::test
