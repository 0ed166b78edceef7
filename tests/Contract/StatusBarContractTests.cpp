#include "Platform/Memory/MemoryImages.h"
#include "Platform/Memory/MemoryStatusBar.h"
#include "tests/Contract/StatusBarContract.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>

namespace contract {

namespace {

class MemoryStatusBarBackend final : public StatusBarBackend {
  public:
    std::unique_ptr<platform::StatusItem>
    makeItem(const std::shared_ptr<platform::Menu>& menu) override {
        auto item = bar_.makeStatusItem(platform::StatusBar::variableLength);
        item->button()->setImage(images_.draw({18, 18}, [](platform::Canvas&) {}));
        item->setMenu(menu);
        return item;
    }

    void open() override { bar_.item()->click(); }

    std::string firstTitle() override { return bar_.item()->menu()->items().front()->title(); }

    void choose(const std::string& title) override {
        static_cast<void>(bar_.item()->choose(title));
    }

    [[nodiscard]] bool isShown() override { return bar_.item() != nullptr; }

    bool turnUntil(const std::function<bool()>& condition) override { return condition(); }

  private:
    platform::MemoryStatusBar bar_;
    platform::MemoryImages images_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         StatusBarContract,
                         (backend<StatusBarBackend, MemoryStatusBarBackend>("Memory")),
                         nameOfBackend<StatusBarBackend>);

using testing::ElementsAre;

TEST_P(StatusBarContract, AnItemHasAButton) {
    EXPECT_NE(item_->button(), nullptr);
    EXPECT_EQ(item_->button(), item_->button());
}

TEST_P(StatusBarContract, OpeningTheMenuNotifiesItsDelegateOnceAndShowsItsChanges) {
    backend_->open();
    EXPECT_EQ(sample_.openingCount, 1);
    EXPECT_EQ(backend_->firstTitle(), "Opened: 1");
}

TEST_P(StatusBarContract, ARowShowsItsNewTitle) {
    sample_.information->setTitle("New");
    EXPECT_EQ(backend_->firstTitle(), "New");
}

TEST_P(StatusBarContract, ChoosingARowPerformsItsAction) {
    backend_->choose("Quit");
    EXPECT_TRUE(backend_->turnUntil([this] { return !sample_.chosen.empty(); }));
    EXPECT_THAT(sample_.chosen, ElementsAre("quit"));
}

TEST_P(StatusBarContract, ADisabledRowDoesNothing) {
    backend_->choose(backend_->firstTitle());
    // Actions run in the order in which rows are chosen.
    backend_->choose("Quit");
    EXPECT_TRUE(backend_->turnUntil([this] { return !sample_.chosen.empty(); }));
    EXPECT_THAT(sample_.chosen, ElementsAre("quit"));
}

TEST_P(StatusBarContract, DestroyingTheItemRemovesItFromTheBar) {
    EXPECT_TRUE(backend_->isShown());
    item_.reset();
    EXPECT_TRUE(backend_->turnUntil([this] { return !backend_->isShown(); }));
}

} // namespace contract
