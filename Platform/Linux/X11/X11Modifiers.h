#pragma once

#include "HotKey/ModifierFlags.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

/// Which modifier bits of X11's key events stand for which keys on the present keyboard. Only
/// Shift, Lock and Control have fixed bits; the others are looked up. Main thread only.
class X11Modifiers {
  public:
    /// Asks the server and waits for its answer. None when the server is gone.
    [[nodiscard]] static std::optional<X11Modifiers> query(const X11Connection& connection);

    /// The bits of a Carbon modifier mask. None when the keyboard has no such modifier, or Carbon's
    /// mask holds one without a counterpart.
    [[nodiscard]] std::optional<std::uint16_t> mask(std::uint32_t carbonModifiers) const;

    /// The modifiers of an event's state by their meaning: command, option, control and shift when
    /// they are held, Caps Lock when it is on.
    [[nodiscard]] hotkey::ModifierFlags modifierFlags(std::uint16_t state) const;

    /// The modifiers of an event's state that are held down: without the locks, the pointer's
    /// buttons and the layout group, all of which share that state.
    [[nodiscard]] std::uint16_t heldModifiers(std::uint16_t state) const;

    /// Every combination that the locks (Caps Lock, NumLock and ScrollLock) can be in, none locked
    /// included.
    [[nodiscard]] std::vector<std::uint16_t> lockStates() const;

    bool operator==(const X11Modifiers&) const = default;

  private:
    X11Modifiers() = default;

    /// 0 for a modifier that the keyboard lacks.
    std::uint16_t shift_ = 0;
    std::uint16_t control_ = 0;
    std::uint16_t option_ = 0;
    std::uint16_t command_ = 0;
    std::uint16_t locks_ = 0;
};

} // namespace platform
