#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Memory/MemoryTime.h"
#include "tests/Contract/ClockContract.h"
#include "tests/Support/WaitUntil.h"

#include <chrono>

namespace contract {

namespace {

class MemoryClockBackend final : public ClockBackend {
  public:
    const platform::Clock& clock() override { return clock_; }

    void pass() override { queue_.advance(std::chrono::milliseconds(1)); }

  private:
    platform::MemoryMainQueue queue_;
    platform::MemoryClock clock_{queue_};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         ClockContract,
                         (backend<ClockBackend, MemoryClockBackend>("Memory")),
                         nameOfBackend<ClockBackend>);

using foundation::Date;

TEST_P(ClockContract, Advances) {
    const Date begin = backend_->clock().now();
    EXPECT_TRUE(testing_support::waitUntil([&] { return backend_->clock().now() > begin; },
                                           testing_support::patience,
                                           [&] { backend_->pass(); }));
}

} // namespace contract
