#include "Platform/Posix/PosixServices.h"
#include "tests/Contract/ClockContract.h"

#include <chrono>

namespace contract {

namespace {

class SystemClockBackend final : public ClockBackend {
  public:
    const platform::Clock& clock() override { return clock_; }

    void pass() override {}

  private:
    platform::SystemClock clock_;
};

TEST(SystemClockTests, ShowsTheTimeOfTheSystem) {
    const auto before = std::chrono::system_clock::now();
    const foundation::Date now = platform::SystemClock().now();
    const auto after = std::chrono::system_clock::now();
    EXPECT_GE(now, std::chrono::floor<std::chrono::microseconds>(before));
    EXPECT_LE(now, after);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Posix,
                         ClockContract,
                         (backend<ClockBackend, SystemClockBackend>("System")),
                         nameOfBackend<ClockBackend>);

} // namespace contract
