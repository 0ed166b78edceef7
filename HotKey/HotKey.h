#pragma once

#include "Foundation/Interface.h"
#include "Foundation/Value.h"
#include "Foundation/WeakReference.h"
#include "HotKey/Key.h"
#include "HotKey/KeyCombo.h"
#include "HotKey/ModifierFlags.h"

#include <cstdint>
#include <functional>

namespace hotkey {

class HotKeysController;

/// One system-wide hot key, registered for as long as it exists and is not paused. If the system
/// refuses the combination, the handlers never run; there is no other sign of it.
///
/// Main thread only. A handler may do anything to its own hot key, including destroying it. A hot
/// key that outlives its controller is no longer registered.
class HotKey : foundation::Pinned {
  public:
    using Handler = std::function<void()>;

    /// Registers with `controller`.
    HotKey(HotKeysController& controller,
           KeyCombo keyCombo,
           Handler onKeyDown = {},
           Handler onKeyUp = {});
    HotKey(HotKeysController& controller,
           std::uint32_t carbonKeyCode,
           std::uint32_t carbonModifiers,
           Handler onKeyDown = {},
           Handler onKeyUp = {});
    HotKey(HotKeysController& controller,
           Key key,
           ModifierFlags modifiers,
           Handler onKeyDown = {},
           Handler onKeyUp = {});

    /// Unregisters first, then releases the handlers and what they capture.
    ~HotKey();

    [[nodiscard]] const foundation::Uuid& identifier() const { return identifier_; }

    [[nodiscard]] const KeyCombo& keyCombo() const { return keyCombo_; }

    /// Called on key-down and on key-up. May be empty, and may be replaced at any time: the next
    /// event calls the new one.
    Handler keyDownHandler;
    Handler keyUpHandler;

    [[nodiscard]] bool isPaused() const { return isPaused_; }

    /// Unregisters or registers, even if the value does not change.
    void setIsPaused(bool isPaused);

    /// For the controller, which does not own the hot key.
    [[nodiscard]] foundation::WeakReference<HotKey> weakReference() const {
        return self_.reference();
    }

  private:
    foundation::Uuid identifier_ = foundation::Uuid::random();
    KeyCombo keyCombo_;
    bool isPaused_ = false;
    foundation::WeakReference<HotKeysController> controller_;
    foundation::WeakReferenceSource<HotKey> self_{this};
};

} // namespace hotkey
