#pragma once

#include "Foundation/Interface.h"
#include "Foundation/ObserverList.h"
#include "HotKey/ModifierFlags.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace platform {

/// A key press in one of the program's own windows, or its repetition. Modifier keys alone are not
/// events.
struct KeyEvent {
    /// The keyCode of a key that has no Carbon virtual key code.
    static constexpr std::uint32_t noKeyCode = 0xFFFF;

    std::uint32_t keyCode = noKeyCode; ///< Carbon virtual key code: the key's position.
    /// The modifiers held, Caps Lock if it is on, and the function flag for arrows, F-keys and
    /// navigation keys.
    hotkey::ModifierFlags modifierFlags;
};

/// Shows the program the key presses of its own windows before the windows get them. Main thread
/// only.
class KeyDownMonitors : public foundation::Interface {
  public:
    /// Returns the event that the windows get; none swallows it.
    using Handler = std::function<std::optional<KeyEvent>(const KeyEvent&)>;

    /// The monitor stays until it is removed; its handler may do that.
    [[nodiscard]] virtual foundation::ObserverToken addLocalMonitor(Handler handler) = 0;

    virtual void removeMonitor(foundation::ObserverToken token) = 0;
};

} // namespace platform
