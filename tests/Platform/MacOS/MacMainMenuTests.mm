#import "Platform/MacOS/MacMainMenu.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <gtest/gtest.h>

namespace {

class MacMainMenuTests : public testing::Test {
  protected:
    static NSMenuItem* item(NSString* key, NSEventModifierFlags modifiers) {
        NSMenuItem* const made = [[NSMenuItem alloc] initWithTitle:@"Item"
                                                            action:nil
                                                     keyEquivalent:key];
        made.keyEquivalentModifierMask = modifiers;
        return made;
    }

    testing_support::AppKitLoop loop_;
};

TEST_F(MacMainMenuTests, HasNoItemsWithoutAMenu) {
    EXPECT_TRUE(platform::menuItems(nil).empty());
}

TEST_F(MacMainMenuTests, ReadsTheKeysOfItemsAndSubmenus) {
    NSMenu* const file = [[NSMenu alloc] init];
    [file addItem:item(@"s", NSEventModifierFlagCommand | NSEventModifierFlagShift)];
    NSMenuItem* const fileItem = item(@"", 0);
    fileItem.submenu = file;
    NSMenu* const menu = [[NSMenu alloc] init];
    [menu addItem:fileItem];
    [menu addItem:item(@"q", NSEventModifierFlagCommand)];

    const auto items = platform::menuItems(menu);
    ASSERT_EQ(items.size(), 2U);
    ASSERT_TRUE(items[0] && items[1]);
    EXPECT_EQ(items[0]->keyEquivalent, "");
    ASSERT_EQ(items[0]->submenu.size(), 1U);
    EXPECT_EQ(items[0]->submenu[0]->keyEquivalent, "s");
    EXPECT_EQ(items[0]->submenu[0]->keyEquivalentModifierMask,
              hotkey::ModifierFlags::command | hotkey::ModifierFlags::shift);
    EXPECT_EQ(items[1]->keyEquivalent, "q");
    EXPECT_TRUE(items[1]->submenu.empty());
}

} // namespace
