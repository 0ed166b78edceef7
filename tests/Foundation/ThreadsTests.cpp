#include "Foundation/Threads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <latch>
#include <memory>
#include <thread>
#include <vector>

namespace {

using foundation::OnceOnly;

TEST(OnceOnlyTests, MakesTheObjectOnFirstUse) {
    int made = 0;
    OnceOnly<int> once([&made] { return std::make_unique<int>(++made); });
    EXPECT_EQ(made, 0);
    int& first = once.shared();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(&once.shared(), &first);
    EXPECT_EQ(made, 1);
}

TEST(OnceOnlyTests, OwnsTheObject) {
    const auto life = std::make_shared<int>(0);
    {
        OnceOnly<std::shared_ptr<int>> once(
            [&life] { return std::make_unique<std::shared_ptr<int>>(life); });
        EXPECT_EQ(life.use_count(), 1);
        EXPECT_EQ(once.shared(), life);
        EXPECT_EQ(life.use_count(), 2);
    }
    EXPECT_EQ(life.use_count(), 1);
}

TEST(OnceOnlyTests, MakesNothingIfUnused) {
    bool isMade = false;
    {
        const OnceOnly<int> once([&isMade] {
            isMade = true;
            return std::make_unique<int>(0);
        });
    }
    EXPECT_FALSE(isMade);
}

TEST(OnceOnlyTests, GivesAllThreadsTheSameObject) {
    constexpr int rounds = 50;
    for (int round = 0; round < rounds; ++round) {
        std::atomic<int> made = 0;
        OnceOnly<int> once([&made] {
            // Gives the other threads time to arrive.
            std::this_thread::yield();
            return std::make_unique<int>(++made);
        });
        std::array<int*, 8> seen{};
        std::latch start(seen.size());
        std::vector<std::thread> threads;
        threads.reserve(seen.size());
        for (int*& mine : seen) {
            threads.emplace_back([&start, &once, &mine] {
                start.arrive_and_wait();
                mine = &once.shared();
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(made, 1);
        EXPECT_EQ(std::count(seen.begin(), seen.end(), &once.shared()),
                  static_cast<std::ptrdiff_t>(seen.size()));
    }
}

} // namespace
