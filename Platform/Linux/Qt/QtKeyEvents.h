#pragma once

#include "HotKey/ModifierFlags.h"
#include "Platform/KeyDownMonitors.h"

#include <cstdint>
#include <functional>

class QKeyEvent;

namespace platform {

/// What the modifier bits of the window system's key events mean, where Qt's own reading is not
/// exact.
using NativeModifiers = std::function<hotkey::ModifierFlags(std::uint32_t state)>;

/// Whether the key is one for holding with others or for locking, on the user's layout: Shift, Caps
/// Lock, AltGr and so on.
[[nodiscard]] bool isModifierKey(const QKeyEvent& event);

/// The press of a key as its place on the keyboard, whatever the layout prints there. The place of
/// a modifier that the layout made another key has no key code: by its place it is a modifier.
/// Qt's own reading of the modifiers is taken when `nativeModifiers` is empty.
[[nodiscard]] KeyEvent keyEvent(const QKeyEvent& event, const NativeModifiers& nativeModifiers);

} // namespace platform
