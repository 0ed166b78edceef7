#pragma once

#include "HotKey/Key.h"
#include "HotKey/ModifierFlags.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// The key code that X11, Wayland and Qt's native scan codes use: the kernel's evdev code plus 8.
/// Like hotkey::Key it names a position on the keyboard, whatever the layout prints there. May be
/// above 255, where X11's key codes end. Any thread.
[[nodiscard]] std::uint32_t xkbKeyCode(hotkey::Key key);

/// The inverse of xkbKeyCode(); nullopt if no key has this code. Any thread.
[[nodiscard]] std::optional<hotkey::Key> keyFromXkbKeyCode(std::uint32_t keyCode);

/// The modifier flags of the key alone, whatever is held with it: the function flag for F-keys,
/// arrows and navigation keys. A key of the numeric pad has none, so it is no shortcut by itself.
/// Any thread.
[[nodiscard]] hotkey::ModifierFlags positionFlags(hotkey::Key key);

/// The combination in UTF-8 as Linux users know it: "Super+Shift+G". Any thread.
[[nodiscard]] std::string shortcutText(hotkey::Key key, hotkey::ModifierFlags modifiers);

} // namespace platform
