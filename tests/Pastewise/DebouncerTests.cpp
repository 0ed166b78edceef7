#include "Pastewise/Debouncer.h"
#include "Platform/Memory/MemoryMainQueue.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

namespace {

using namespace std::chrono_literals;

class DebouncerTests : public testing::Test {
  protected:
    platform::MemoryMainQueue queue_;
    std::optional<pastewise::Debouncer> debouncer_{std::in_place, queue_, 750ms};
};

TEST_F(DebouncerTests, AcceptsTheFirstCall) {
    EXPECT_TRUE(debouncer_->accepts());
}

TEST_F(DebouncerTests, AcceptsOneCallWhileAKeyRepeats) {
    EXPECT_TRUE(debouncer_->accepts());
    queue_.advance(660ms); // until a desktop starts to repeat
    for (int repetition = 0; repetition < 200; ++repetition) {
        EXPECT_FALSE(debouncer_->accepts());
        queue_.advance(40ms);
    }
}

TEST_F(DebouncerTests, AcceptsACallAfterTheQuietTime) {
    EXPECT_TRUE(debouncer_->accepts());
    queue_.advance(749ms);
    EXPECT_FALSE(debouncer_->accepts());
    queue_.advance(749ms);
    EXPECT_FALSE(debouncer_->accepts());
    queue_.advance(750ms);
    EXPECT_TRUE(debouncer_->accepts());
}

TEST_F(DebouncerTests, AcceptsCallsThatAreFarApart) {
    for (int call = 0; call < 3; ++call) {
        EXPECT_TRUE(debouncer_->accepts());
        queue_.advance(750ms);
    }
}

TEST_F(DebouncerTests, CancelsItsTimerWhenDestroyed) {
    EXPECT_TRUE(debouncer_->accepts());
    debouncer_.reset();
    EXPECT_EQ(queue_.pendingCount(), 1U);
    queue_.advance(750ms);
    EXPECT_EQ(queue_.pendingCount(), 0U);
}

} // namespace
