#include "HotKey/HotKeyEventDispatcher.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace hotkey {

OSStatus HotKeyEventDispatcher::installEventHandler(EventTargetRef target,
                                                    EventHandler handler,
                                                    std::span<const EventTypeSpec> types,
                                                    void* userData,
                                                    EventHandlerRef& reference) {
    if (target != getEventDispatcherTarget() || !handler) {
        return paramErr;
    }
    installations_.push_back({.handler = std::move(handler),
                              .types = {types.begin(), types.end()},
                              .userData = userData});
    // Handlers are never removed, so any reference will do that is not null.
    reference.pointer = this;
    return noErr;
}

OSStatus HotKeyEventDispatcher::getEventParameter(
    EventRef event, std::uint32_t name, std::uint32_t type, std::size_t size, void* data) {
    if (event.isNull() || name != kEventParamDirectObject || type != typeEventHotKeyID ||
        size != sizeof(EventHotKeyID)) {
        return paramErr;
    }
    std::memcpy(data, &static_cast<const Event*>(event.pointer)->hotKeyID, size);
    return noErr;
}

std::uint32_t HotKeyEventDispatcher::getEventKind(EventRef event) {
    return event.isNull() ? 0 : static_cast<const Event*>(event.pointer)->kind;
}

OSStatus HotKeyEventDispatcher::send(Event event) {
    const EventTypeSpec type{.eventClass = kEventClassKeyboard, .eventKind = event.kind};
    // A copy: a handler may install another one, or destroy this object with all of them.
    const std::vector<Installation> newestFirst(installations_.rbegin(), installations_.rend());
    for (const auto& [handler, types, userData] : newestFirst) {
        if (std::find(types.begin(), types.end(), type) != types.end()) {
            const OSStatus status = handler({}, {&event}, userData);
            if (status != eventNotHandledErr) {
                return status;
            }
        }
    }
    return eventNotHandledErr;
}

} // namespace hotkey
