#pragma once

#include "HotKey/CarbonEvents.h"
#include "HotKey/EventHotKeyService.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace platform {

/// The half of an event hot-key service that is the same whatever the keys come from: the installed
/// handlers and the events that they are called with. Main thread only.
class HotKeyEventTarget {
  public:
    [[nodiscard]] hotkey::EventTargetRef reference() { return {this}; }

    [[nodiscard]] hotkey::OSStatus install(hotkey::EventTargetRef target,
                                           hotkey::EventHotKeyService::EventHandler handler,
                                           std::span<const hotkey::EventTypeSpec> types,
                                           void* userData,
                                           hotkey::EventHandlerRef& reference);

    /// Calls the handlers that asked for events of that kind, the last one installed first, until
    /// one does not decline. A handler may destroy this object.
    void send(std::uint32_t kind, hotkey::EventHotKeyID hotKeyID) const;

    /// For events that a handler is being called with.
    [[nodiscard]] static hotkey::OSStatus parameter(hotkey::EventRef event,
                                                    std::uint32_t name,
                                                    std::uint32_t type,
                                                    std::size_t size,
                                                    void* data);
    [[nodiscard]] static std::uint32_t kind(hotkey::EventRef event);

  private:
    struct Installation {
        hotkey::EventHotKeyService::EventHandler handler;
        std::vector<hotkey::EventTypeSpec> types;
        void* userData = nullptr;
    };

    std::vector<Installation> installations_;
};

} // namespace platform
