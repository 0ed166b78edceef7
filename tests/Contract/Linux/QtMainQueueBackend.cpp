#include "Platform/Linux/Qt/QtEventLoop.h"
#include "tests/Contract/MainQueueContract.h"
#include "tests/Support/QtTestLoop.h"

#include <chrono>
#include <functional>
#include <thread>

namespace contract {

namespace {

class QtMainQueueBackend final : public MainQueueBackend {
  public:
    platform::MainQueue& queue() override { return queue_; }

    bool runUntil(const std::function<bool()>& condition,
                  std::chrono::milliseconds limit) override {
        return testing_support::QtTestLoop::turnUntil(condition, limit);
    }

  private:
    testing_support::QtTestLoop loop_;
    platform::QtMainQueue queue_;
};

TEST(QtMainQueueTests, RunsWorkFromAnotherThreadOnTheMainThread) {
    QtMainQueueBackend backend;
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

INSTANTIATE_TEST_SUITE_P(Linux,
                         MainQueueContract,
                         (backend<MainQueueBackend, QtMainQueueBackend>("Qt")),
                         nameOfBackend<MainQueueBackend>);

} // namespace contract
