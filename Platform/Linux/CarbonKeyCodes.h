#pragma once

#include <cstdint>
#include <optional>

namespace platform {

/// Carbon's virtual key codes and the kernel's (evdev) key codes name the same thing: a place on
/// the keyboard, whatever the layout prints on it. These two functions are each other's inverse
/// over every key that hotkey::Key has. X11's key codes are evdev's plus 8. Any thread.

/// None for a code that is no key's.
[[nodiscard]] std::optional<std::uint16_t> evdevKeyCode(std::uint32_t carbonKeyCode);

/// None for a key that Carbon's table lacks.
[[nodiscard]] std::optional<std::uint32_t> carbonKeyCode(std::uint16_t evdevKeyCode);

} // namespace platform
