#pragma once

#include "HotKey/EventHotKeyService.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace hotkey {

/// The half of an EventHotKeyService that is the same on every system without Carbon: it keeps the
/// installed handlers and calls them with the events that a derived class sends. Main thread only.
class HotKeyEventDispatcher : public EventHotKeyService {
  public:
    /// What an EventRef of this service points to.
    struct Event {
        EventHotKeyID hotKeyID;
        std::uint32_t kind = kEventHotKeyPressed;
    };

    struct Installation {
        EventHandler handler;
        std::vector<EventTypeSpec> types;
        void* userData = nullptr;
    };

    [[nodiscard]] EventTargetRef getEventDispatcherTarget() final { return {this}; }

    [[nodiscard]] OSStatus installEventHandler(EventTargetRef target,
                                               EventHandler handler,
                                               std::span<const EventTypeSpec> types,
                                               void* userData,
                                               EventHandlerRef& reference) override;
    [[nodiscard]] OSStatus getEventParameter(EventRef event,
                                             std::uint32_t name,
                                             std::uint32_t type,
                                             std::size_t size,
                                             void* data) override;
    [[nodiscard]] std::uint32_t getEventKind(EventRef event) final;

  protected:
    /// Calls the handlers installed for events of this kind, the newest first, until one answers
    /// anything but eventNotHandledErr. Returns the last answer. A handler may destroy this object.
    OSStatus send(Event event);

    [[nodiscard]] const std::vector<Installation>& installations() const { return installations_; }

  private:
    std::vector<Installation> installations_;
};

} // namespace hotkey
