#include "Platform/Memory/MemoryClock.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "tests/Contract/ClockContract.h"

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

} // namespace contract
