#include "Foundation/Logger.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "tests/Contract/LogSinkContract.h"

#include <gmock/gmock.h>

#include <thread>

namespace contract {

namespace {

class MemoryLogSinkBackend final : public LogSinkBackend {
  public:
    foundation::LogSink& sink() override { return sink_; }

    void setDebugEnabled(bool isEnabled) override {
        sink_.setEnabled(foundation::LogLevel::debug, isEnabled);
    }

    std::vector<std::string> lines() override {
        std::vector<std::string> lines;
        for (const auto& entry : sink_.entries()) {
            const bool isDebug = entry.level == foundation::LogLevel::debug;
            std::string line = entry.subsystem + "." + entry.category;
            line += isDebug ? " debug: " : " error: ";
            lines.push_back(line + entry.redacted);
        }
        return lines;
    }

  private:
    platform::MemoryLogSink sink_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         LogSinkContract,
                         (backend<LogSinkBackend, MemoryLogSinkBackend>("Memory")),
                         nameOfBackend<LogSinkBackend>);

using foundation::Logger;
using testing::ElementsAre;

TEST_P(LogSinkContract, HasOneChannelPerSubsystemAndCategory) {
    EXPECT_EQ(&sink_.channel("a", "b"), &sink_.channel("a", "b"));
    EXPECT_NE(&sink_.channel("a", "b"), &sink_.channel("a", "c"));
    EXPECT_NE(&sink_.channel("a", "b"), &sink_.channel("c", "b"));
}

TEST_P(LogSinkContract, WritesErrorsAlwaysAndDebugOnlyWhileItIsEnabled) {
    const Logger logger(sink_, "app", "Class");
    backend_->setDebugEnabled(false);
    EXPECT_FALSE(logger.isEnabled(foundation::LogLevel::debug));
    EXPECT_TRUE(logger.isEnabled(foundation::LogLevel::error));
    logger.debug("first");
    logger.error("second");
    backend_->setDebugEnabled(true);
    EXPECT_TRUE(logger.isEnabled(foundation::LogLevel::debug));
    logger.debug("third");
    EXPECT_THAT(backend_->lines(),
                ElementsAre("app.Class error: second", "app.Class debug: third"));
}

TEST_P(LogSinkContract, ShowsPublicValuesAndRedactsPrivateOnes) {
    const Logger logger(sink_, "app", "Class");
    logger.error("%s, %{public}s, %ld of them", "secret", "open", 3L);
    EXPECT_THAT(backend_->lines(), ElementsAre("app.Class error: <private>, open, 3 of them"));
}

TEST_P(LogSinkContract, AcceptsRecordsFromSeveralThreadsAtOnce) {
    constexpr int recordsOfEach = 200;
    const auto write = [](const Logger& logger) {
        for (int record = 0; record < recordsOfEach; ++record) {
            logger.error("record %d", record);
        }
    };
    std::thread other(write, Logger(sink_, "app", "Other"));
    write(Logger(sink_, "app", "Class"));
    other.join();
    EXPECT_EQ(backend_->lines().size(), 2U * recordsOfEach);
}

} // namespace contract
