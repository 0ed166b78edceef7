#pragma once

#include "Foundation/Interface.h"
#include "HotKey/CarbonEvents.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace hotkey {

/// System-wide hot keys: what a system must supply, in the shape of Carbon's event manager, which
/// is the one system where an implementation only passes the calls on. Main thread only; handlers
/// run on the main thread, from the event loop and never from inside one of these calls.
class EventHotKeyService : public foundation::Interface {
  public:
    /// Called with the next handler in line, the event and the user data given at installation.
    /// Answers noErr, or eventNotHandledErr to have the event offered to the next handler.
    using EventHandler =
        std::function<OSStatus(EventHandlerCallRef next, EventRef event, void* userData)>;

    /// The application-wide target of events.
    [[nodiscard]] virtual EventTargetRef getEventDispatcherTarget() = 0;

    /// Takes a combination of a Carbon virtual key code and a Carbon modifier mask. On success
    /// answers noErr and sets `reference`; from then on each physical press sends one
    /// kEventHotKeyPressed and its end one kEventHotKeyReleased that carry `hotKeyID`. Otherwise,
    /// for example when the combination is taken already, nothing has changed.
    [[nodiscard]] virtual OSStatus registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers,
                                                       EventHotKeyID hotKeyID,
                                                       EventTargetRef target,
                                                       std::uint32_t options,
                                                       EventHotKeyRef& reference) = 0;

    /// Gives a combination back: others can take it when the call returns, and no event of it is
    /// sent any more. A null or unknown reference is answered with an error and changes nothing.
    virtual OSStatus unregisterEventHotKey(EventHotKeyRef reference) = 0;

    /// Has `handler` called for events of the given types until the service goes, the handler
    /// installed last before the others.
    [[nodiscard]] virtual OSStatus installEventHandler(EventTargetRef target,
                                                       EventHandler handler,
                                                       std::span<const EventTypeSpec> types,
                                                       void* userData,
                                                       EventHandlerRef& reference) = 0;

    /// Copies a parameter of at most `size` bytes out of the event, which a handler was called with
    /// and has not returned from.
    [[nodiscard]] virtual OSStatus getEventParameter(
        EventRef event, std::uint32_t name, std::uint32_t type, std::size_t size, void* data) = 0;

    /// kEventHotKeyPressed or kEventHotKeyReleased for the events of hot keys.
    [[nodiscard]] virtual std::uint32_t getEventKind(EventRef event) = 0;
};

} // namespace hotkey
