#pragma once

#include "HotKey/HotKeyEventDispatcher.h"
#include "Platform/Memory/Journal.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <set>
#include <span>
#include <utility>
#include <vector>

namespace platform {

/// Hot keys in memory: refuses on demand, and lets a test press keys and send events that no key
/// would cause. Events are delivered inside the call that causes them. Main thread only.
///
/// The journal has "register 5 0x100 as QZhk 1", followed by " refused" if it was; "unregister 1"
/// with the id, "unregister nothing" for a null or unknown reference; "install" and "install
/// refused". Each is written before the registration exists and while it still does.
class MemoryEventHotKeyService final : public hotkey::HotKeyEventDispatcher, public Journaled {
  public:
    using Journaled::Journaled;

    /// A Carbon key code and modifier mask.
    using Combination = std::pair<std::uint32_t, std::uint32_t>;

    [[nodiscard]] hotkey::OSStatus registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers,
                                                       hotkey::EventHotKeyID hotKeyID,
                                                       hotkey::EventTargetRef target,
                                                       std::uint32_t options,
                                                       hotkey::EventHotKeyRef& reference) override;
    hotkey::OSStatus unregisterEventHotKey(hotkey::EventHotKeyRef reference) override;
    [[nodiscard]] hotkey::OSStatus installEventHandler(hotkey::EventTargetRef target,
                                                       EventHandler handler,
                                                       std::span<const hotkey::EventTypeSpec> types,
                                                       void* userData,
                                                       hotkey::EventHandlerRef& reference) override;
    [[nodiscard]] hotkey::OSStatus getEventParameter(hotkey::EventRef event,
                                                     std::uint32_t name,
                                                     std::uint32_t type,
                                                     std::size_t size,
                                                     void* data) override;

    /// The status of every later registration, installation of a handler or reading of an event's
    /// parameter; noErr lets them succeed again.
    void refuseRegistrations(hotkey::OSStatus status) { registrationStatus_ = status; }

    void refuseInstallations(hotkey::OSStatus status) { installationStatus_ = status; }

    void refuseParameters(hotkey::OSStatus status) { parameterStatus_ = status; }

    /// Later registrations answer noErr but hand out a null reference.
    void handOutNullReferences() { handsOutReferences_ = false; }

    /// Later registrations that are refused set the reference all the same.
    void setReferencesOfRefusals() { setsReferencesOfRefusals_ = true; }

    /// Another program takes a combination or gives it back. False if it is taken here.
    bool takeElsewhere(Combination combination);

    void giveBackElsewhere(Combination combination) { takenElsewhere_.erase(combination); }

    /// The user presses or releases a combination. Returns the handlers' answer;
    /// eventNotHandledErr if the combination is not registered.
    hotkey::OSStatus press(Combination combination);
    hotkey::OSStatus release(Combination combination);

    /// Delivers any event, even one that no key causes, and returns the handlers' answer.
    using HotKeyEventDispatcher::send;

    using HotKeyEventDispatcher::installations;

    /// The registered combinations, the oldest first.
    [[nodiscard]] std::vector<Combination> registered() const;

  private:
    struct Registration {
        Combination combination;
        hotkey::EventHotKeyID hotKeyID;
    };

    [[nodiscard]] const Registration* find(Combination combination) const;
    hotkey::OSStatus sendFor(Combination combination, std::uint32_t kind);

    std::list<Registration> registrations_; ///< References are the addresses of its elements.
    std::set<Combination> takenElsewhere_;
    hotkey::OSStatus registrationStatus_ = hotkey::noErr;
    hotkey::OSStatus installationStatus_ = hotkey::noErr;
    hotkey::OSStatus parameterStatus_ = hotkey::noErr;
    bool handsOutReferences_ = true;
    bool setsReferencesOfRefusals_ = false;
};

} // namespace platform
