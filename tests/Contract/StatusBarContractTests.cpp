#include "tests/Contract/StatusBarContract.h"

#include <gmock/gmock.h>

namespace contract {

using testing::ElementsAre;

TEST_P(StatusBarContract, AnItemHasAButton) {
    EXPECT_NE(item_->button(), nullptr);
    EXPECT_EQ(item_->button(), item_->button());
}

TEST_P(StatusBarContract, OpeningTheMenuTellsItsDelegateOnceAndShowsWhatThatSet) {
    backend_->open();
    EXPECT_EQ(sample_.openingCount, 1);
    EXPECT_EQ(backend_->firstTitle(), "Opened: 1");
}

TEST_P(StatusBarContract, ARowShowsItsNewTitle) {
    sample_.information->setTitle("New");
    EXPECT_EQ(backend_->firstTitle(), "New");
}

TEST_P(StatusBarContract, ARowThatIsChosenDoesItsWork) {
    backend_->choose("Quit");
    EXPECT_TRUE(backend_->turnUntil([this] { return !sample_.chosen.empty(); }));
    EXPECT_THAT(sample_.chosen, ElementsAre("quit"));
}

TEST_P(StatusBarContract, ADisabledRowDoesNothing) {
    backend_->choose(backend_->firstTitle());
    // Rows are performed in the order in which they are chosen.
    backend_->choose("Quit");
    EXPECT_TRUE(backend_->turnUntil([this] { return !sample_.chosen.empty(); }));
    EXPECT_THAT(sample_.chosen, ElementsAre("quit"));
}

TEST_P(StatusBarContract, TheItemGoesWithItsObject) {
    EXPECT_TRUE(backend_->isShown());
    item_.reset();
    EXPECT_TRUE(backend_->turnUntil([this] { return !backend_->isShown(); }));
}

} // namespace contract
