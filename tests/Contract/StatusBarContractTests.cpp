#include "Platform/Memory/MemoryImages.h"
#include "Platform/Memory/MemoryStatusBar.h"
#include "tests/Platform/Linux/Tray/TrayTest.h"

#include <gmock/gmock.h>

#include <memory>
#include <ostream>
#include <string>

namespace {

using platform::StatusBar;
using testing::ElementsAre;

enum class Kind { memory, tray };

void PrintTo(Kind kind, std::ostream* out) {
    *out << (kind == Kind::memory ? "Memory" : "Tray");
}

/// A status bar with one item and whoever looks at it: a test, or a tray host in another process.
class StatusBarContract : public tray_test::TrayTest, public testing::WithParamInterface<Kind> {
  protected:
    void SetUp() override {
        if (isMemory()) {
            item_ = memoryBar_.makeStatusItem(StatusBar::variableLength);
            item_->button()->setImage(memoryImages_.draw({18, 18}, [](platform::Canvas&) {}));
            item_->setMenu(sample_.menu);
        } else {
            startHost();
            makeItem();
            ASSERT_TRUE(turnUntil([this] { return host_->showsIcon(); }));
        }
    }

    [[nodiscard]] static bool isMemory() { return GetParam() == Kind::memory; }

    void open() {
        if (isMemory()) {
            memoryBar_.item()->click();
        } else {
            ask("menu");
        }
    }

    /// The title of the first row as it is shown now.
    std::string firstTitle() {
        return isMemory() ? memoryBar_.item()->menu()->items().front()->title()
                          : ask("layout")["rows"][0]["label"].get<std::string>();
    }

    void choose(const std::string& title) {
        if (isMemory()) {
            static_cast<void>(memoryBar_.item()->choose(title));
        } else {
            ask("choose " + title);
        }
    }

    [[nodiscard]] bool isShown() {
        return isMemory() ? memoryBar_.item() != nullptr : host_->count("unregistered") == 0;
    }

    platform::MemoryStatusBar memoryBar_;
    platform::MemoryImages memoryImages_;
};

TEST_P(StatusBarContract, AnItemHasAButton) {
    EXPECT_NE(item_->button(), nullptr);
    EXPECT_EQ(item_->button(), item_->button());
}

TEST_P(StatusBarContract, OpeningTheMenuTellsItsDelegateOnceAndShowsWhatThatSet) {
    open();
    EXPECT_EQ(sample_.openingCount, 1);
    EXPECT_EQ(firstTitle(), "Opened: 1");
}

TEST_P(StatusBarContract, ARowShowsItsNewTitle) {
    sample_.information->setTitle("New");
    EXPECT_EQ(firstTitle(), "New");
}

TEST_P(StatusBarContract, ARowThatIsChosenDoesItsWork) {
    choose("Quit");
    EXPECT_TRUE(turnUntil([this] { return !sample_.chosen.empty(); }));
    EXPECT_THAT(sample_.chosen, ElementsAre("quit"));
}

TEST_P(StatusBarContract, ADisabledRowDoesNothing) {
    choose(firstTitle());
    // Rows are performed in the order in which they are chosen.
    choose("Quit");
    EXPECT_TRUE(turnUntil([this] { return !sample_.chosen.empty(); }));
    EXPECT_THAT(sample_.chosen, ElementsAre("quit"));
}

TEST_P(StatusBarContract, TheItemGoesWithItsObject) {
    EXPECT_TRUE(isShown());
    item_.reset();
    EXPECT_TRUE(turnUntil([this] { return !isShown(); }));
}

INSTANTIATE_TEST_SUITE_P(OfEachBackend,
                         StatusBarContract,
                         testing::Values(Kind::memory, Kind::tray),
                         testing::PrintToStringParamName());

} // namespace
