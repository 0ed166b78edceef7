#include "Platform/Menu.h"

#include <gtest/gtest.h>

namespace {

using platform::MenuItem;

TEST(MenuItemTests, NotifiesObserversOfANewTitle) {
    MenuItem item("Time Saved: 5m");
    int changeCount = 0;
    item.addTitleObserver([&] { ++changeCount; });
    item.setTitle("Time Saved: 6m");
    EXPECT_EQ(item.title(), "Time Saved: 6m");
    EXPECT_EQ(changeCount, 1);
}

TEST(MenuItemTests, DoesNotNotifyObserversOfTheSameTitle) {
    MenuItem item("Time Saved: 5m");
    int changeCount = 0;
    item.addTitleObserver([&] { ++changeCount; });
    item.setTitle("Time Saved: 5m");
    EXPECT_EQ(item.title(), "Time Saved: 5m");
    EXPECT_EQ(changeCount, 0);
}

} // namespace
