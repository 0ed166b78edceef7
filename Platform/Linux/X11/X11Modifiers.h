#pragma once

#include "HotKey/ModifierFlags.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace platform {

/// What the modifier bits of X11's key events mean on the current keyboard. Only Shift, Lock and
/// Control have fixed bits; the others are looked up. Main thread only.
class X11Modifiers {
  public:
    /// Waits for the server; nullopt if it is gone.
    [[nodiscard]] static std::optional<X11Modifiers> query(const X11Connection& connection);

    /// The bits of a Carbon modifier mask; nullopt if the keyboard or X11 lacks one of them.
    [[nodiscard]] std::optional<std::uint16_t> mask(std::uint32_t carbonModifiers) const;

    /// Command, option, control and shift if the event's state holds them, and Caps Lock if it is
    /// on.
    [[nodiscard]] hotkey::ModifierFlags modifierFlags(std::uint32_t state) const;

    /// The modifier bits of an event's state that are held: without locks, pointer buttons and the
    /// layout group.
    [[nodiscard]] std::uint16_t heldModifiers(std::uint16_t state) const;

    /// Every combination of Caps Lock, NumLock and ScrollLock, none of them included.
    [[nodiscard]] std::vector<std::uint16_t> lockStates() const;

    bool operator==(const X11Modifiers&) const = default;

  private:
    X11Modifiers() = default;

    /// Command, option, control and shift with their bits; 0 if the keyboard lacks the modifier.
    std::array<std::pair<hotkey::ModifierFlags, std::uint16_t>, 4> bits_;
    std::uint16_t locks_ = 0;
};

} // namespace platform
