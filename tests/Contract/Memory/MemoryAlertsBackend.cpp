#include "Platform/Memory/MemoryAlerts.h"
#include "tests/Contract/AlertsContract.h"

namespace contract {

namespace {

class MemoryAlertsBackend final : public AlertsBackend {
  public:
    platform::Alerts& alerts() override { return alerts_; }

    void answerNext(std::optional<std::size_t> buttonIndex) override {
        alerts_.setAnswer(buttonIndex);
    }

    std::vector<std::string> shownTexts() override {
        const platform::Alert& last = alerts_.shown().back();
        return {last.messageText, last.informativeText};
    }

  private:
    platform::MemoryAlerts alerts_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         AlertsContract,
                         (backend<AlertsBackend, MemoryAlertsBackend>("Memory")),
                         nameOfBackend<AlertsBackend>);

} // namespace contract
