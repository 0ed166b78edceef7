#pragma once

#include "HotKey/Key.h"
#include "HotKey/ModifierFlags.h"

namespace platform {

/// The event modifier flag that Carbon's keyboards set for the keys of the numeric pad and for the
/// arrows.
inline constexpr hotkey::ModifierFlags numericPadFlag{0x200000};

/// The modifier flags that the event of a key carries for the place of the key alone, whatever is
/// held with it: the function flag for F-keys, arrows and the navigation keys, and numericPadFlag.
/// Any thread.
[[nodiscard]] hotkey::ModifierFlags keyPlaceFlags(hotkey::Key key);

} // namespace platform
