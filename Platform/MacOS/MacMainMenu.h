#pragma once

#include "HotKey/MainMenu.h"
#import "Platform/MacOS/MacConversions.h"

#import <AppKit/AppKit.h>

namespace platform {

/// The application's main menu, which a program without a Dock icon has only if it makes one. Main
/// thread only.
class MacMainMenu final : public hotkey::MainMenu {
  public:
    [[nodiscard]] std::vector<std::optional<Item>> items() override {
        return itemsOf(NSApp.mainMenu);
    }

  private:
    static std::vector<std::optional<Item>> itemsOf(NSMenu* menu) {
        std::vector<std::optional<Item>> items;
        for (id element in menu.itemArray) {
            auto& item = items.emplace_back();
            if ([element isKindOfClass:[NSMenuItem class]]) {
                NSMenuItem* const menuItem = element;
                item = {.keyEquivalent = utf8String(menuItem.keyEquivalent),
                        .keyEquivalentModifierMask = {menuItem.keyEquivalentModifierMask},
                        .submenu = itemsOf(menuItem.submenu)};
            }
        }
        return items;
    }
};

} // namespace platform
