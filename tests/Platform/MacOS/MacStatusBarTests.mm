#import "Platform/MacOS/MacStatusBar.h"
#import "tests/Support/MacOS/AppKitLoop.h"
#include "tests/Support/SampleMenu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace {

using platform::KeyEquivalent;
using platform::MenuItem;
using testing::ElementsAre;

class MacStatusBarTests : public testing::Test {
  protected:
    NSMenu* menu() { return macMenu_->nsMenu(); }

    NSMenuItem* row(NSInteger index) { return [menu() itemAtIndex:index]; }

    std::string title(NSInteger index) { return row(index).title.UTF8String; }

    /// Does what the system does before it shows the menu.
    void open() { [menu().delegate menuWillOpen:menu()]; }

    testing_support::AppKitLoop loop_;
    testing_support::SampleMenu sample_;
    std::optional<platform::MacMenu> macMenu_{sample_.menu};
};

TEST_F(MacStatusBarTests, HasARowForEachItemInOrder) {
    ASSERT_EQ(menu().numberOfItems, 5);
    EXPECT_EQ(title(0), "Opened: 0");
    EXPECT_EQ(title(1), "Clear_Saved & Time\u2026");
    EXPECT_EQ(title(2), "Preferences\u2026");
    EXPECT_TRUE([row(3) isSeparatorItem]);
    EXPECT_EQ(title(4), "Quit");
}

TEST_F(MacStatusBarTests, ShowsTheKeyOfARow) {
    EXPECT_STREQ(row(1).keyEquivalent.UTF8String, "");
    EXPECT_STREQ(row(2).keyEquivalent.UTF8String, ",");
    EXPECT_EQ(row(2).keyEquivalentModifierMask, NSEventModifierFlagCommand);
    EXPECT_STREQ(row(4).keyEquivalent.UTF8String, "q");
}

TEST_F(MacStatusBarTests, ShowsTheModifiersOfAKey) {
    const auto menu = std::make_shared<platform::Menu>();
    menu->addItem(std::make_shared<MenuItem>(
        "Row",
        platform::Action{.name = "row", .perform = [] {}},
        KeyEquivalent{"k", hotkey::ModifierFlags::shift | hotkey::ModifierFlags::command}));
    const platform::MacMenu macMenu(menu);
    EXPECT_EQ([macMenu.nsMenu() itemAtIndex:0].keyEquivalentModifierMask,
              NSEventModifierFlagShift | NSEventModifierFlagCommand);
}

TEST_F(MacStatusBarTests, OnlyARowWithAnActionIsEnabled) {
    [menu() update];
    EXPECT_FALSE([row(0) isEnabled]);
    EXPECT_TRUE([row(1) isEnabled]);
    EXPECT_TRUE([row(4) isEnabled]);
}

TEST_F(MacStatusBarTests, AChosenRowPerformsOnlyItsOwnAction) {
    [menu() performActionForItemAtIndex:4];
    [menu() performActionForItemAtIndex:1];
    EXPECT_THAT(sample_.chosen, ElementsAre("quit", "clear"));
}

TEST_F(MacStatusBarTests, SendsTheMessageNamedByTheAction) {
    EXPECT_STREQ(NSStringFromSelector(row(4).action).UTF8String, "quit");
}

TEST_F(MacStatusBarTests, OpeningNotifiesTheDelegateOnceAndShowsItsChanges) {
    open();
    EXPECT_EQ(sample_.openingCount, 1);
    EXPECT_EQ(title(0), "Opened: 1");
}

TEST_F(MacStatusBarTests, ARowFollowsItsTitle) {
    sample_.information->setTitle("New");
    EXPECT_EQ(title(0), "New");
}

TEST_F(MacStatusBarTests, ARowMayOutliveTheMenu) {
    NSMenu* const left = menu();
    macMenu_.reset();
    sample_.information->setTitle("New");
    EXPECT_STREQ([left itemAtIndex:0].title.UTF8String, "Opened: 0");
    EXPECT_EQ(left.delegate, nil);
}

} // namespace
