#include "Platform/Memory/MemoryTime.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

using namespace std::chrono_literals;
using foundation::Date;
using platform::MemoryClock;
using platform::MemoryMainQueue;

TEST(MemoryClockTests, GoesWithTheTimeOfTheQueue) {
    MemoryMainQueue queue;
    const MemoryClock clock(queue);
    EXPECT_EQ(clock.now(), Date{});
    queue.advance(1500ms);
    EXPECT_EQ(clock.now(), Date{1500ms});
}

TEST(MemoryClockTests, ShowsWhatItWasSetToAndGoesOnFromThere) {
    MemoryMainQueue queue;
    queue.advance(10s);
    MemoryClock clock(queue);
    clock.setNow(Date{1h});
    EXPECT_EQ(clock.now(), Date{1h});
    queue.advance(1s);
    EXPECT_EQ(clock.now(), Date{1h + 1s});
    clock.setNow(Date{1us});
    EXPECT_EQ(clock.now(), Date{1us});
}

TEST(MemoryClockTests, LeavesDelayedWorkItsDueTimeWhenItIsSet) {
    MemoryMainQueue queue;
    MemoryClock clock(queue);
    std::optional<Date> ranAt;
    queue.asyncAfter(900ms, std::make_shared<platform::WorkItem>([&] { ranAt = clock.now(); }));
    clock.setNow(Date{24h});
    queue.advance(899ms);
    EXPECT_EQ(ranAt, std::nullopt);
    queue.advance(1ms);
    EXPECT_EQ(ranAt, Date{24h + 900ms});
}

} // namespace
