#pragma once

#include "Foundation/Interface.h"
#include "HotKey/ModifierFlags.h"

#include <optional>
#include <string>
#include <vector>

namespace hotkey {

/// The application's main menu, as far as its keyboard shortcuts go. Main thread only.
class MainMenu : public foundation::Interface {
  public:
    struct Item {
        /// What the system says triggers the item, in UTF-8; empty for an item without a shortcut.
        std::string keyEquivalent;
        ModifierFlags keyEquivalentModifierMask;
        /// The items of its submenu; none of them when it has no submenu. See items().
        std::vector<std::optional<Item>> submenu;
    };

    /// The menu's items from top to bottom, none of them when the application has no main menu. An
    /// empty element stands for something in the system's array that is not a menu item.
    [[nodiscard]] virtual std::vector<std::optional<Item>> items() = 0;
};

} // namespace hotkey
