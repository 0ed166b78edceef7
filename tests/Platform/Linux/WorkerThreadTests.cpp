#include "Platform/Linux/WorkerThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <string>
#include <thread>

namespace {

using platform::WorkerThread;

TEST(WorkerThreadTests, DoesWorkElsewhereInTheOrderInWhichItWasGiven) {
    WorkerThread worker;
    std::string notes;
    std::thread::id doneBy;
    for (const char mark : {'a', 'b', 'c'}) {
        worker.perform([&notes, &doneBy, mark] {
            notes += mark;
            doneBy = std::this_thread::get_id();
        });
    }
    worker.waitUntilDone();
    EXPECT_EQ(notes, "abc");
    EXPECT_NE(doneBy, std::this_thread::get_id());
}

TEST(WorkerThreadTests, KeepsNobodyWaitingWhoDoesNotAskForIt) {
    std::promise<void> permission;
    std::atomic<bool> isDone = false;
    WorkerThread worker;
    worker.perform([&] {
        permission.get_future().wait();
        isDone = true;
    });
    EXPECT_FALSE(isDone);
    permission.set_value();
    worker.waitUntilDone();
    EXPECT_TRUE(isDone);
}

TEST(WorkerThreadTests, HasNothingToWaitForBeforeTheFirstWork) {
    WorkerThread worker;
    worker.waitUntilDone();
}

TEST(WorkerThreadTests, FinishesWhatItWasGivenBeforeItGoes) {
    int done = 0;
    {
        WorkerThread worker;
        for (int piece = 0; piece < 100; ++piece) {
            worker.perform([&done] { ++done; });
        }
    }
    EXPECT_EQ(done, 100);
}

} // namespace
