#include "tests/Contract/AlertsContract.h"

#include <gmock/gmock.h>

namespace contract {

using testing::Contains;

TEST_P(AlertsContract, TellsWhichButtonWasPressed) {
    EXPECT_EQ(answerWith(0), 0U);
    EXPECT_EQ(answerWith(1), 1U);
    EXPECT_EQ(answerWith(2), 2U);
}

TEST_P(AlertsContract, KnowsNoButtonWhereTheAlertWentAwayWithoutOne) {
    EXPECT_EQ(answerWith(std::nullopt), std::nullopt);
}

TEST_P(AlertsContract, ShowsBothTexts) {
    answerWith(1);
    EXPECT_THAT(backend_->shownTexts(), Contains(question.messageText));
    EXPECT_THAT(backend_->shownTexts(), Contains(question.informativeText));
}

} // namespace contract
