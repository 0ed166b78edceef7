#pragma once

#include "Foundation/Interface.h"
#include "HotKey/CarbonEvents.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace hotkey {

/// System-wide hot keys in the shape of Carbon's event manager. Main thread only; handlers run on
/// the main thread, from the event loop and never inside one of these calls.
class EventHotKeyService : public foundation::Interface {
  public:
    /// Called with the next handler, the event and the user data given at installation. Returns
    /// eventNotHandledErr to have the event offered to the next handler.
    using EventHandler =
        std::function<OSStatus(EventHandlerCallRef next, EventRef event, void* userData)>;

    /// The application-wide event target.
    [[nodiscard]] virtual EventTargetRef getEventDispatcherTarget() = 0;

    /// Registers a Carbon virtual key code with a Carbon modifier mask. Returns noErr and sets
    /// `reference` on success; each physical press then sends one kEventHotKeyPressed and each
    /// release one kEventHotKeyReleased, both carrying `hotKeyID`. On failure, for example if the
    /// combination is taken, nothing changes.
    [[nodiscard]] virtual OSStatus registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers,
                                                       EventHotKeyID hotKeyID,
                                                       EventTargetRef target,
                                                       std::uint32_t options,
                                                       EventHotKeyRef& reference) = 0;

    /// Once the call returns, other programs can take the combination and it sends no more events.
    /// An error for a null or unknown reference.
    virtual OSStatus unregisterEventHotKey(EventHotKeyRef reference) = 0;

    /// Has `handler` called for events of the given types for the service's lifetime. The newest
    /// handler is called first.
    [[nodiscard]] virtual OSStatus installEventHandler(EventTargetRef target,
                                                       EventHandler handler,
                                                       std::span<const EventTypeSpec> types,
                                                       void* userData,
                                                       EventHandlerRef& reference) = 0;

    /// Copies a parameter of at most `size` bytes out of an event that a handler is being called
    /// with.
    [[nodiscard]] virtual OSStatus getEventParameter(
        EventRef event, std::uint32_t name, std::uint32_t type, std::size_t size, void* data) = 0;

    /// kEventHotKeyPressed or kEventHotKeyReleased for events of hot keys.
    [[nodiscard]] virtual std::uint32_t getEventKind(EventRef event) = 0;
};

} // namespace hotkey
