#pragma once

#include "HotKey/KeyCombo.h"
#import "Platform/MacOS/MacConversions.h"

#import <AppKit/AppKit.h>

namespace platform {

/// The items of a menu such as NSApp.mainMenu; none if it is nil. Main thread only.
[[nodiscard]] inline std::vector<std::optional<hotkey::MainMenuItem>> menuItems(NSMenu* menu) {
    std::vector<std::optional<hotkey::MainMenuItem>> items;
    for (id element in menu.itemArray) {
        auto& item = items.emplace_back();
        if ([element isKindOfClass:[NSMenuItem class]]) {
            NSMenuItem* const menuItem = element;
            item = {.keyEquivalent = utf8String(menuItem.keyEquivalent),
                    .keyEquivalentModifierMask = {menuItem.keyEquivalentModifierMask},
                    .submenu = menuItems(menuItem.submenu)};
        }
    }
    return items;
}

} // namespace platform
