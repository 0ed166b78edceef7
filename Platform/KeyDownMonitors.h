#pragma once

#include "Foundation/Interface.h"
#include "Foundation/ObserverList.h"
#include "HotKey/ModifierFlags.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace platform {

/// A key pressed while one of the program's own windows has the keyboard, or repeated because it is
/// held. Modifier keys alone are no such events.
struct KeyEvent {
    /// What KeyEvent::keyCode is for a key without a Carbon virtual key code: no key has it.
    static constexpr std::uint32_t noKeyCode = 0xFFFF;

    std::uint32_t keyCode = noKeyCode; ///< Carbon virtual key code: the key's place.
    /// The modifiers held, Caps Lock when it is on, and the function flag for arrows, F-keys and
    /// the navigation keys.
    hotkey::ModifierFlags modifierFlags;
};

/// Lets the program see the key presses of its own windows before the windows do. Main thread only.
class KeyDownMonitors : public foundation::Interface {
  public:
    /// Returns the event that the windows are to get; none swallows it.
    using Handler = std::function<std::optional<KeyEvent>(const KeyEvent&)>;

    /// The monitor stays until it is removed, which its handler may do.
    [[nodiscard]] virtual foundation::ObserverToken addLocalMonitor(Handler handler) = 0;

    virtual void removeMonitor(foundation::ObserverToken token) = 0;
};

} // namespace platform
