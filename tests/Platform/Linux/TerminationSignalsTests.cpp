#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/TerminationSignals.h"
#include "tests/Support/QtTestLoop.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

class TerminationSignalsTests : public testing::TestWithParam<int> {
  protected:
    testing_support::QtTestLoop loop_;
    platform::QtEventLoop eventLoop_;
};

TEST_P(TerminationSignalsTests, AreDeliveredByTheEventLoopInsteadOfEndingTheProcess) {
    int count = 0;
    const platform::TerminationSignals signals;
    const auto watch = signals.deliver(eventLoop_, [&] { ++count; });
    ASSERT_EQ(std::raise(GetParam()), 0);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(testing_support::waitUntil(
        [&] { return count == 1; }, testing_support::patience, testing_support::QtTestLoop::turn));
}

TEST_P(TerminationSignalsTests, KillTheProcessAgainAfterwards) {
    EXPECT_EXIT(
        {
            {
                const platform::TerminationSignals signals;
                const auto watch = signals.deliver(eventLoop_, [] {});
            }
            static_cast<void>(std::raise(GetParam()));
        },
        testing::KilledBySignal(GetParam()),
        "");
}

TEST_P(TerminationSignalsTests, IncludeThoseReceivedBeforeTheWatch) {
    int count = 0;
    const platform::TerminationSignals signals;
    ASSERT_EQ(std::raise(GetParam()), 0);
    const auto watch = signals.deliver(eventLoop_, [&] { ++count; });
    EXPECT_TRUE(loop_.turnUntil([&] { return count == 1; }));
}

TEST_P(TerminationSignalsTests, StayIgnoredIfTheProcessWasStartedToIgnoreThem) {
    const auto previous = std::signal(GetParam(), SIG_IGN);
    int count = 0;
    {
        const platform::TerminationSignals signals;
        const auto watch = signals.deliver(eventLoop_, [&] { ++count; });
        ASSERT_EQ(std::raise(GetParam()), 0);
        // A signal that is not ignored is delivered after it.
        const int other = GetParam() == SIGTERM ? SIGINT : SIGTERM;
        ASSERT_EQ(std::raise(other), 0);
        EXPECT_TRUE(loop_.turnUntil([&] { return count > 0; }));
    }
    EXPECT_EQ(count, 1);
    static_cast<void>(std::signal(GetParam(), previous));
}

INSTANTIATE_TEST_SUITE_P(Each,
                         TerminationSignalsTests,
                         testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& signal) {
                             return signal.param == SIGTERM  ? "SIGTERM"
                                    : signal.param == SIGINT ? "SIGINT"
                                                             : "SIGHUP";
                         });

} // namespace
