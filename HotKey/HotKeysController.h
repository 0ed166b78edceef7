#pragma once

#include "Foundation/Interface.h"
#include "Foundation/Uuid.h"
#include "Foundation/WeakReference.h"
#include "HotKey/CarbonEvents.h"
#include "HotKey/EventHotKeyService.h"
#include "HotKey/HotKey.h"

#include <cstdint>
#include <map>

namespace hotkey {

/// The registry between all hot keys and the system's service: it gives each registration its id
/// and finds the hot key that an event is for. One for the process, made by whoever puts the
/// program together.
///
/// Main thread only. The service outlives the controller. Hot keys may go before or after it: with
/// the controller every registration that is left is given back.
class HotKeysController : foundation::Pinned {
  public:
    /// What the system puts beside its name on every event of this program's hot keys.
    static constexpr std::uint32_t signature = fourCharCode("QZhk");

    /// One registered hot key. It is kept, without a reference, when the system refused it.
    struct HotKeyBox {
        foundation::Uuid identifier;
        foundation::WeakReference<HotKey> hotKey;
        std::uint32_t carbonHotKeyID = 0;
        EventHotKeyRef carbonEventHotKey;
    };

    /// Ids count up from the one after `hotKeysCount` and are never used again.
    explicit HotKeysController(EventHotKeyService& service, std::uint32_t hotKeysCount = 0);
    ~HotKeysController();

    /// Registers the hot key under a fresh id, unless it is registered. Says nothing when the
    /// system refuses. Running out of ids is a fatal error.
    void register_(const HotKey& hotKey); // NOLINT(readability-identifier-naming): a keyword

    /// Gives the hot key's registration back, if there is one.
    void unregister(const HotKey& hotKey);

    /// The hot key's entry; null when it is not registered. Valid until the next change here.
    [[nodiscard]] const HotKeyBox* hotKeyBox(const HotKey& hotKey) const;

    /// The hot key registered under the id; null when there is none or it no longer exists.
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
