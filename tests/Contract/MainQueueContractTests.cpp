#include "Platform/Memory/MemoryMainQueue.h"
#include "tests/Contract/MainQueueContract.h"

#include <chrono>
#include <functional>

namespace contract {

using namespace std::chrono_literals;

namespace {

class MemoryMainQueueBackend final : public MainQueueBackend {
  public:
    platform::MainQueue& queue() override { return queue_; }

    bool runUntil(const std::function<bool()>& condition,
                  std::chrono::milliseconds limit) override {
        for (auto passed = 0ms; passed <= limit && !condition(); ++passed) {
            queue_.advance(passed == 0ms ? 0ms : 1ms);
        }
        return condition();
    }

  private:
    platform::MemoryMainQueue queue_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         MainQueueContract,
                         (backend<MainQueueBackend, MemoryMainQueueBackend>("Memory")),
                         nameOfBackend<MainQueueBackend>);

using namespace std::chrono_literals;

TEST_P(MainQueueContract, RunsWorkLaterAndInOrder) {
    queue_.async([this] { notes_ += 'a'; });
    queue_.async([this] { notes_ += 'b'; });
    EXPECT_EQ(notes_, "");
    EXPECT_TRUE(runUntilNoted(2));
    EXPECT_EQ(notes_, "ab");
}

TEST_P(MainQueueContract, RunsDelayedWorkInOrderOfDueTime) {
    queue_.asyncAfter(60ms, note('b'));
    queue_.asyncAfter(20ms, note('a'));
    EXPECT_TRUE(runUntilNoted(2));
    EXPECT_EQ(notes_, "ab");
}

TEST_P(MainQueueContract, DoesNotRunCancelledWork) {
    const auto cancelled = note('x');
    queue_.asyncAfter(10ms, cancelled);
    queue_.asyncAfter(30ms, note('a'));
    cancelled->cancel();
    EXPECT_TRUE(runUntilNoted(1));
    EXPECT_EQ(notes_, "a");
}

TEST_P(MainQueueContract, WorkMayQueueMoreWork) {
    queue_.async([this] { queue_.async([this] { notes_ += 'n'; }); });
    EXPECT_TRUE(runUntilNoted(1));
}

TEST_P(MainQueueContract, KnowsTheMainThread) {
    EXPECT_TRUE(queue_.isMainThread());
}

} // namespace contract
