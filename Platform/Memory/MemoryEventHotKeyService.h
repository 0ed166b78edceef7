#pragma once

#include "HotKey/CarbonEvents.h"
#include "HotKey/EventHotKeyService.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// The hot keys of a system in memory: it records what was asked of it, refuses on demand, and
/// sends the events of keys that a test presses as well as events that no key would cause. Events
/// are delivered inside the call that causes them. Main thread only.
class MemoryEventHotKeyService final : public hotkey::EventHotKeyService {
  public:
    /// A combination in Carbon's values: key code, modifier mask.
    using Combination = std::pair<std::uint32_t, std::uint32_t>;

    /// An event of any shape.
    struct Event {
        hotkey::EventHotKeyID hotKeyID;
        std::uint32_t kind = hotkey::kEventHotKeyPressed;
        /// What reading the event's parameter answers.
        hotkey::OSStatus parameterStatus = hotkey::noErr;
    };

    /// What was installed with one call.
    struct Installation {
        EventHandler handler;
        std::vector<hotkey::EventTypeSpec> types;
        void* userData = nullptr;
        hotkey::EventTargetRef target;
    };

    [[nodiscard]] hotkey::EventTargetRef getEventDispatcherTarget() override;
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
    [[nodiscard]] std::uint32_t getEventKind(hotkey::EventRef event) override;

    /// From now on every registration is answered with that status; noErr ends it.
    void refuseRegistrations(hotkey::OSStatus status) { registrationStatus_ = status; }

    /// From now on a registration answers noErr but hands out no reference.
    void handOutNullReferences() { handsOutReferences_ = false; }

    /// From now on every installation of a handler is answered with that status; noErr ends it.
    void refuseInstallations(hotkey::OSStatus status) { installationStatus_ = status; }

    /// Another program takes a combination, or gives it back. It cannot take what is taken here:
    /// false then.
    bool takeElsewhere(Combination combination);

    void giveBackElsewhere(Combination combination) { takenElsewhere_.erase(combination); }

    /// The user presses or lets go of a combination. The answer is that of the handlers;
    /// eventNotHandledErr when nobody has the combination.
    hotkey::OSStatus press(Combination combination);
    hotkey::OSStatus release(Combination combination);

    /// Delivers any event, also one that no key causes, and returns what the handlers answered.
    hotkey::OSStatus send(Event event);
    hotkey::OSStatus sendNull();

    /// The combinations taken now, in the order in which they were.
    [[nodiscard]] std::vector<Combination> registered() const;

    [[nodiscard]] const std::vector<Installation>& installations() const { return installations_; }

    /// The calls so far: "register 5 0x100 as QZhk 1" with " refused" behind it when it was,
    /// "unregister 1" with the id, "unregister nothing" for a null or unknown reference, "install"
    /// and "install refused".
    [[nodiscard]] const std::vector<std::string>& calls() const { return calls_; }

  private:
    struct Registration {
        Combination combination;
        hotkey::EventHotKeyID hotKeyID;
    };

    [[nodiscard]] hotkey::OSStatus statusFor(Combination combination,
                                             hotkey::EventTargetRef target) const;
    hotkey::OSStatus sendFor(Combination combination, std::uint32_t kind);
    hotkey::OSStatus deliver(hotkey::EventRef event, std::uint32_t kind);

    std::vector<std::unique_ptr<Registration>> registrations_;
    std::vector<Installation> installations_;
    std::set<Combination> takenElsewhere_;
    std::vector<std::string> calls_;
    hotkey::OSStatus registrationStatus_ = hotkey::noErr;
    hotkey::OSStatus installationStatus_ = hotkey::noErr;
    bool handsOutReferences_ = true;
};

} // namespace platform
