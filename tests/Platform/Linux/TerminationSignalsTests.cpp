#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/TerminationSignals.h"
#include "tests/Support/QtApplication.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

class TerminationSignalsTests : public testing::TestWithParam<int> {
  protected:
    testing_support::QtApplication application;
    platform::QtEventLoop eventLoop;
};

TEST_P(TerminationSignalsTests, AreDeliveredByTheEventLoopInsteadOfEndingTheProcess) {
    int count = 0;
    const platform::TerminationSignals signals(eventLoop, [&] { ++count; });
    ASSERT_EQ(std::raise(GetParam()), 0);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(testing_support::waitUntil(
        [&] { return count == 1; }, testing_support::patience, testing_support::turnQtEventLoop));
}

TEST_P(TerminationSignalsTests, EndTheProcessAgainOnceNobodyCatchesThem) {
    EXPECT_EXIT(
        {
            {
                const platform::TerminationSignals signals(eventLoop, [] {});
            }
            static_cast<void>(std::raise(GetParam()));
        },
        testing::KilledBySignal(GetParam()),
        "");
}

INSTANTIATE_TEST_SUITE_P(
    Each, TerminationSignalsTests, testing::Values(SIGTERM, SIGINT, SIGHUP), [](const auto& signal) {
        return signal.param == SIGTERM ? "SIGTERM" : signal.param == SIGINT ? "SIGINT" : "SIGHUP";
    });

} // namespace
