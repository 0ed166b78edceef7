#pragma once

#include "Foundation/Interface.h"
#include "HotKey/ModifierFlags.h"

#include <cstdint>
#include <optional>

namespace platform {

/// What the modifier bits of the display server's key events stand for on the present keyboard.
/// Main thread only.
class KeyboardModifiers : public foundation::Interface {
  public:
    /// Command, option, control and shift as far as they are held in such a state, and Caps Lock
    /// when it is on. None when the server does not say.
    [[nodiscard]] virtual std::optional<hotkey::ModifierFlags>
    modifierFlags(std::uint32_t state) const = 0;
};

} // namespace platform
