#include "Platform/Linux/Qt/QtMainQueue.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "tests/Support/QtTestLoop.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <thread>

namespace {

using namespace std::chrono_literals;
using platform::MainQueue;
using platform::WorkItem;

/// A main queue and what it takes to let it run.
struct Backend {
    virtual ~Backend() = default;
    virtual MainQueue& queue() = 0;
    /// Lets time pass until the condition holds or `limit` is over.
    virtual bool runUntil(const std::function<bool()>& condition,
                          std::chrono::milliseconds limit) = 0;
};

struct MemoryBackend final : Backend {
    platform::MemoryMainQueue memoryQueue;

    MainQueue& queue() override { return memoryQueue; }

    bool runUntil(const std::function<bool()>& condition,
                  std::chrono::milliseconds limit) override {
        for (auto passed = 0ms; passed <= limit && !condition(); ++passed) {
            memoryQueue.advance(passed == 0ms ? 0ms : 1ms);
        }
        return condition();
    }
};

struct QtBackend final : Backend {
    testing_support::QtTestLoop loop;
    platform::QtMainQueue qtQueue;

    MainQueue& queue() override { return qtQueue; }

    bool runUntil(const std::function<bool()>& condition,
                  std::chrono::milliseconds limit) override {
        return testing_support::waitUntil(condition, limit, testing_support::QtTestLoop::turn);
    }
};

struct BackendMaker {
    const char* name;
    std::unique_ptr<Backend> (*make)();
};

void PrintTo(const BackendMaker& maker, std::ostream* out) {
    *out << maker.name;
}

class MainQueueContract : public testing::TestWithParam<BackendMaker> {
  protected:
    std::shared_ptr<WorkItem> note(char mark) {
        return std::make_shared<WorkItem>([this, mark] { notes += mark; });
    }

    bool runUntilNoted(std::size_t count) {
        return backend->runUntil([&] { return notes.size() >= count; }, testing_support::patience);
    }

    std::unique_ptr<Backend> backend = GetParam().make();
    MainQueue& queue = backend->queue();
    std::string notes;
};

TEST_P(MainQueueContract, RunsWorkLaterAndInTheOrderOfQueueing) {
    queue.async([this] { notes += 'a'; });
    queue.async([this] { notes += 'b'; });
    EXPECT_EQ(notes, "");
    EXPECT_TRUE(runUntilNoted(2));
    EXPECT_EQ(notes, "ab");
}

TEST_P(MainQueueContract, RunsDelayedWorkInTheOrderOfItsDueTimes) {
    queue.asyncAfter(60ms, note('b'));
    queue.asyncAfter(20ms, note('a'));
    EXPECT_TRUE(runUntilNoted(2));
    EXPECT_EQ(notes, "ab");
}

TEST_P(MainQueueContract, NeverRunsWorkThatWasCancelled) {
    const auto cancelled = note('x');
    queue.asyncAfter(10ms, cancelled);
    queue.asyncAfter(30ms, note('a'));
    cancelled->cancel();
    EXPECT_TRUE(runUntilNoted(1));
    EXPECT_EQ(notes, "a");
}

TEST_P(MainQueueContract, LetsWorkQueueMoreWork) {
    queue.async([this] { queue.async([this] { notes += 'n'; }); });
    EXPECT_TRUE(runUntilNoted(1));
}

TEST_P(MainQueueContract, KnowsTheMainThread) {
    EXPECT_TRUE(queue.isMainThread());
}

INSTANTIATE_TEST_SUITE_P(OfEachBackend,
                         MainQueueContract,
                         testing::Values(BackendMaker{"Memory",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<MemoryBackend>();
                                                      }},
                                         BackendMaker{"Qt",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<QtBackend>();
                                                      }}),
                         [](const auto& maker) { return std::string(maker.param.name); });

TEST(QtMainQueueTests, RunsWorkFromAnotherThreadOnTheMainOne) {
    QtBackend backend;
    bool isMainThereForQueue = true;
    std::thread::id ranOn;
    std::thread other([&] {
        isMainThereForQueue = backend.qtQueue.isMainThread();
        backend.qtQueue.async([&] { ranOn = std::this_thread::get_id(); });
    });
    other.join();
    EXPECT_FALSE(isMainThereForQueue);
    EXPECT_TRUE(backend.runUntil([&] { return ranOn == std::this_thread::get_id(); },
                                 testing_support::patience));
}

} // namespace
