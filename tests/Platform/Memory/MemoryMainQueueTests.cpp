#include "Platform/Memory/MemoryMainQueue.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using namespace std::chrono_literals;
using platform::MemoryMainQueue;
using platform::WorkItem;

class MemoryMainQueueTests : public testing::Test {
  protected:
    std::shared_ptr<WorkItem> note(char mark) {
        return std::make_shared<WorkItem>([this, mark] { notes_ += mark; });
    }

    MemoryMainQueue queue_;
    std::string notes_;
};

TEST_F(MemoryMainQueueTests, RunsNothingWithinTheCallThatQueuesIt) {
    queue_.async([this] { notes_ += 'a'; });
    EXPECT_EQ(notes_, "");
    queue_.drain();
    EXPECT_EQ(notes_, "a");
}

TEST_F(MemoryMainQueueTests, RunsDelayedWorkInTheOrderOfDueTimes) {
    queue_.asyncAfter(900ms, note('c'));
    queue_.asyncAfter(100ms, note('a'));
    queue_.asyncAfter(100ms, note('b'));
    queue_.advance(99ms);
    EXPECT_EQ(notes_, "");
    queue_.advance(1ms);
    EXPECT_EQ(notes_, "ab");
    queue_.advance(800ms);
    EXPECT_EQ(notes_, "abc");
}

TEST_F(MemoryMainQueueTests, AdvancesTimeToTheDueTimeOfEachWorkItem) {
    std::chrono::milliseconds seen{};
    queue_.asyncAfter(100ms, std::make_shared<WorkItem>([&] {
                          seen = queue_.now();
                          queue_.asyncAfter(100ms, note('n'));
                      }));
    queue_.advance(1000ms);
    EXPECT_EQ(seen, 100ms);
    EXPECT_EQ(notes_, "n");
    EXPECT_EQ(queue_.now(), 1000ms);
}

TEST_F(MemoryMainQueueTests, SkipsCancelledWork) {
    const auto item = note('x');
    queue_.asyncAfter(10ms, item);
    item->cancel();
    queue_.advance(20ms);
    EXPECT_EQ(notes_, "");
    EXPECT_EQ(queue_.pendingCount(), 0U);
}

} // namespace
