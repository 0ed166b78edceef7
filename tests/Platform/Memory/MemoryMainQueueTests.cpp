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
        return std::make_shared<WorkItem>([this, mark] { notes += mark; });
    }

    MemoryMainQueue queue;
    std::string notes;
};

TEST_F(MemoryMainQueueTests, RunsNothingInsideTheCallThatQueuedIt) {
    queue.async([this] { notes += 'a'; });
    EXPECT_EQ(notes, "");
    queue.drain();
    EXPECT_EQ(notes, "a");
}

TEST_F(MemoryMainQueueTests, RunsDelayedWorkInTheOrderOfItsDueTimes) {
    queue.asyncAfter(900ms, note('c'));
    queue.asyncAfter(100ms, note('a'));
    queue.asyncAfter(100ms, note('b'));
    queue.advance(99ms);
    EXPECT_EQ(notes, "");
    queue.advance(1ms);
    EXPECT_EQ(notes, "ab");
    queue.advance(800ms);
    EXPECT_EQ(notes, "abc");
}

TEST_F(MemoryMainQueueTests, ShowsEachPieceOfWorkItsOwnTime) {
    std::chrono::milliseconds seen{};
    queue.asyncAfter(100ms, std::make_shared<WorkItem>([&] {
                         seen = queue.now();
                         queue.asyncAfter(100ms, note('n'));
                     }));
    queue.advance(1000ms);
    EXPECT_EQ(seen, 100ms);
    EXPECT_EQ(notes, "n");
    EXPECT_EQ(queue.now(), 1000ms);
}

TEST_F(MemoryMainQueueTests, SkipsWorkThatWasCancelled) {
    const auto item = note('x');
    queue.asyncAfter(10ms, item);
    item->cancel();
    queue.advance(20ms);
    EXPECT_EQ(notes, "");
    EXPECT_EQ(queue.pendingCount(), 0U);
}

} // namespace
