#include "Platform/Memory/MemoryLogSink.h"
#include "tests/Contract/LogSinkContract.h"

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

} // namespace contract
