#include "Platform/Memory/MemoryClock.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Posix/SystemClock.h"
#include "tests/Contract/BackendMaker.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

namespace {

using foundation::Date;
using namespace std::chrono_literals;

/// A clock and what it takes to let time pass.
class Backend {
  public:
    Backend() = default;
    virtual ~Backend() = default;
    Backend(const Backend&) = delete;
    Backend& operator=(const Backend&) = delete;
    Backend(Backend&&) = delete;
    Backend& operator=(Backend&&) = delete;

    virtual const platform::Clock& clock() = 0;
    virtual void pass() = 0;
};

class MemoryBackend final : public Backend {
  public:
    const platform::Clock& clock() override { return clock_; }

    void pass() override { queue_.advance(1ms); }

  private:
    platform::MemoryMainQueue queue_;
    platform::MemoryClock clock_{queue_};
};

class SystemBackend final : public Backend {
  public:
    const platform::Clock& clock() override { return clock_; }

    void pass() override {}

  private:
    platform::SystemClock clock_;
};

using BackendMaker = contract::BackendMaker<Backend>;

class ClockContract : public testing::TestWithParam<BackendMaker> {
  protected:
    std::unique_ptr<Backend> backend_ = GetParam().make();
};

TEST_P(ClockContract, GoesOn) {
    const Date begin = backend_->clock().now();
    EXPECT_TRUE(testing_support::waitUntil([&] { return backend_->clock().now() > begin; },
                                           testing_support::patience,
                                           [&] { backend_->pass(); }));
}

INSTANTIATE_TEST_SUITE_P(OfEachBackend,
                         ClockContract,
                         testing::Values(BackendMaker{"Memory",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<MemoryBackend>();
                                                      }},
                                         BackendMaker{"System",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<SystemBackend>();
                                                      }}),
                         [](const auto& maker) { return std::string(maker.param.name); });

TEST(SystemClockTests, ShowsTheTimeOfTheSystem) {
    const auto before = std::chrono::system_clock::now();
    const Date now = platform::SystemClock().now();
    const auto after = std::chrono::system_clock::now();
    EXPECT_GE(now, std::chrono::floor<std::chrono::microseconds>(before));
    EXPECT_LE(now, after);
}

} // namespace
