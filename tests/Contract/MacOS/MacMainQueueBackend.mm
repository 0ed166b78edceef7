#import "Platform/MacOS/MacMainQueue.h"
#include "tests/Contract/MainQueueContract.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <chrono>
#include <functional>
#include <thread>

namespace contract {

namespace {

class MacMainQueueBackend final : public MainQueueBackend {
  public:
    platform::MainQueue& queue() override { return queue_; }

    bool runUntil(const std::function<bool()>& condition,
                  std::chrono::milliseconds limit) override {
        return testing_support::waitUntil(condition, limit, testing_support::AppKitLoop::turn);
    }

  private:
    testing_support::AppKitLoop loop_;
    platform::MacMainQueue queue_;
};

TEST(MacMainQueueTests, RunsWorkFromAnotherThreadOnTheMainThread) {
    MacMainQueueBackend backend;
    bool isMainThereForQueue = true;
    std::thread::id ranOn;
    std::thread other([&] {
        isMainThereForQueue = backend.queue().isMainThread();
        backend.queue().async([&] { ranOn = std::this_thread::get_id(); });
    });
    other.join();
    EXPECT_FALSE(isMainThereForQueue);
    EXPECT_TRUE(backend.runUntil([&] { return ranOn == std::this_thread::get_id(); },
                                 testing_support::patience));
}

} // namespace

INSTANTIATE_TEST_SUITE_P(MacOS,
                         MainQueueContract,
                         (backend<MainQueueBackend, MacMainQueueBackend>("Mac")),
                         nameOfBackend<MainQueueBackend>);

} // namespace contract
