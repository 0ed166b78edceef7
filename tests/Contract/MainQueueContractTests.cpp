#include "Platform/Linux/Qt/QtMainQueue.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "tests/Contract/BackendMaker.h"
#include "tests/Support/QtTestLoop.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace {

using namespace std::chrono_literals;
using platform::MainQueue;
using platform::WorkItem;

/// A main queue and what it takes to let it run.
class Backend {
  public:
    Backend() = default;
    virtual ~Backend() = default;
    Backend(const Backend&) = delete;
    Backend& operator=(const Backend&) = delete;
    Backend(Backend&&) = delete;
    Backend& operator=(Backend&&) = delete;

    virtual MainQueue& queue() = 0;
    /// Lets time pass until the condition holds or `limit` is over.
    virtual bool runUntil(const std::function<bool()>& condition,
                          std::chrono::milliseconds limit) = 0;
};

class MemoryBackend final : public Backend {
  public:
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

class QtBackend final : public Backend {
  public:
    testing_support::QtTestLoop loop;
    platform::QtMainQueue qtQueue;

    MainQueue& queue() override { return qtQueue; }

    bool runUntil(const std::function<bool()>& condition,
                  std::chrono::milliseconds limit) override {
        return testing_support::waitUntil(condition, limit, testing_support::QtTestLoop::turn);
    }
};

using BackendMaker = contract::BackendMaker<Backend>;

class MainQueueContract : public testing::TestWithParam<BackendMaker> {
  protected:
    std::shared_ptr<WorkItem> note(char mark) {
        return std::make_shared<WorkItem>([this, mark] { notes_ += mark; });
    }

    bool runUntilNoted(std::size_t count) {
        return backend_->runUntil([&] { return notes_.size() >= count; },
                                  testing_support::patience);
    }

    std::unique_ptr<Backend> backend_ = GetParam().make();
    MainQueue& queue_ = backend_->queue();
    std::string notes_;
};

TEST_P(MainQueueContract, RunsWorkLaterAndInTheOrderOfQueueing) {
    queue_.async([this] { notes_ += 'a'; });
    queue_.async([this] { notes_ += 'b'; });
    EXPECT_EQ(notes_, "");
    EXPECT_TRUE(runUntilNoted(2));
    EXPECT_EQ(notes_, "ab");
}

TEST_P(MainQueueContract, RunsDelayedWorkInTheOrderOfItsDueTimes) {
    queue_.asyncAfter(60ms, note('b'));
    queue_.asyncAfter(20ms, note('a'));
    EXPECT_TRUE(runUntilNoted(2));
    EXPECT_EQ(notes_, "ab");
}

TEST_P(MainQueueContract, NeverRunsWorkThatWasCancelled) {
    const auto cancelled = note('x');
    queue_.asyncAfter(10ms, cancelled);
    queue_.asyncAfter(30ms, note('a'));
    cancelled->cancel();
    EXPECT_TRUE(runUntilNoted(1));
    EXPECT_EQ(notes_, "a");
}

TEST_P(MainQueueContract, LetsWorkQueueMoreWork) {
    queue_.async([this] { queue_.async([this] { notes_ += 'n'; }); });
    EXPECT_TRUE(runUntilNoted(1));
}

TEST_P(MainQueueContract, KnowsTheMainThread) {
    EXPECT_TRUE(queue_.isMainThread());
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
