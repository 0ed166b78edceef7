#pragma once

#include "Platform/KeyDownMonitors.h"
#include "Platform/Linux/KeyboardModifiers.h"

class QKeyEvent;

namespace platform {

/// Whether the key is one for holding with others or for locking, on the user's layout: Shift, Caps
/// Lock, AltGr and so on.
[[nodiscard]] bool isModifierKey(const QKeyEvent& event);

/// The press of a key as its place on the keyboard, whatever the layout prints there. The place of
/// a modifier that the layout made another key has no key code: by its place it is a modifier.
/// `keyboard` says what the modifier bits mean; Qt's own reading is taken when it is null or does
/// not know.
[[nodiscard]] KeyEvent keyEvent(const QKeyEvent& event, const KeyboardModifiers* keyboard);

} // namespace platform
