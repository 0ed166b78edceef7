#include "Platform/Memory/MemoryPermissions.h"
#include "tests/Contract/AlertsContract.h"

#include <gmock/gmock.h>

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

using testing::Contains;

TEST_P(AlertsContract, ReturnsTheIndexOfThePressedButton) {
    EXPECT_EQ(answerWith(0), 0U);
    EXPECT_EQ(answerWith(1), 1U);
    EXPECT_EQ(answerWith(2), 2U);
}

TEST_P(AlertsContract, ReturnsNulloptIfTheAlertIsDismissed) {
    EXPECT_EQ(answerWith(std::nullopt), std::nullopt);
}

TEST_P(AlertsContract, ShowsBothTexts) {
    answerWith(1);
    EXPECT_THAT(backend_->shownTexts(), Contains(question.messageText));
    EXPECT_THAT(backend_->shownTexts(), Contains(question.informativeText));
}

} // namespace contract
