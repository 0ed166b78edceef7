#import "Platform/MacOS/MacSymbolicHotKeys.h"

#include <gtest/gtest.h>

namespace {

TEST(MacSymbolicHotKeysTests, ListsTheSystemsShortcuts) {
    const auto answer = platform::copySymbolicHotKeys();
    EXPECT_EQ(answer.status, hotkey::noErr);
    ASSERT_TRUE(answer.hotKeys);
    ASSERT_FALSE(answer.hotKeys->empty());
    for (const auto& hotKey : *answer.hotKeys) {
        EXPECT_TRUE(hotKey.contains("kHISymbolicHotKeyEnabled"));
    }
}

} // namespace
