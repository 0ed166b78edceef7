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

} // namespace contract
