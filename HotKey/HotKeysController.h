#pragma once

#include "Foundation/Interface.h"
#include "Foundation/Value.h"
#include "Foundation/WeakReference.h"
#include "HotKey/CarbonEvents.h"
#include "HotKey/EventHotKeyService.h"
#include "HotKey/HotKey.h"

#include <cstdint>
#include <map>

namespace hotkey {

/// The registry between all hot keys of the process and the system's service: assigns the id of
/// each registration and finds the hot key that an event is for.
///
/// Main thread only. The service outlives the controller. Hot keys may be destroyed before or after
/// it; its destruction unregisters those that are left.
class HotKeysController : foundation::Pinned {
  public:
    /// Identifies this program's hot keys in every event.
    static constexpr std::uint32_t signature = fourCharCode("QZhk");

    /// The entry of a registered hot key. Has no Carbon reference if the system refused it.
    struct HotKeyBox {
        foundation::Uuid identifier;
        foundation::WeakReference<HotKey> hotKey;
        std::uint32_t carbonHotKeyID = 0;
        EventHotKeyRef carbonEventHotKey;
    };

    /// Ids count up from `hotKeysCount` + 1 and are never reused.
    explicit HotKeysController(EventHotKeyService& service, std::uint32_t hotKeysCount = 0);
    ~HotKeysController();

    /// Registers the hot key under a new id unless it is registered already. Silent if the system
    /// refuses. Running out of ids is a fatal error.
    void register_(const HotKey& hotKey); // NOLINT(readability-identifier-naming): a keyword

    /// Removes the hot key's registration, if there is one.
    void unregister(const HotKey& hotKey);

    /// The hot key's entry; null if it is not registered. Valid until the next registration or
    /// unregistration.
    [[nodiscard]] const HotKeyBox* hotKeyBox(const HotKey& hotKey) const;

    /// The hot key registered under this id; null if there is none or it no longer exists.
    [[nodiscard]] HotKey* hotKey(std::uint32_t carbonHotKeyID) const;

    /// For hot keys, which may outlive the controller.
    [[nodiscard]] foundation::WeakReference<HotKeysController> weakReference() const {
        return self_.reference();
    }

  private:
    void installEventHandler();
    [[nodiscard]] OSStatus dispatch(EventRef event);

    EventHotKeyService& service_;
    std::map<std::uint32_t, HotKeyBox> hotKeys_;
    std::uint32_t hotKeysCount_;
    EventHandlerRef eventHandler_;
    foundation::WeakReferenceSource<HotKeysController> self_{this};
};

} // namespace hotkey
