#include "Platform/Linux/HotKeyEventTarget.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform {

namespace {

using hotkey::OSStatus;

struct Event {
    std::uint32_t kind = 0;
    hotkey::EventHotKeyID hotKeyID;
};

} // namespace

OSStatus HotKeyEventTarget::install(hotkey::EventTargetRef target,
                                    hotkey::EventHotKeyService::EventHandler handler,
                                    std::span<const hotkey::EventTypeSpec> types,
                                    void* userData,
                                    hotkey::EventHandlerRef& reference) {
    if (target.pointer != this || !handler) {
        return hotkey::paramErr;
    }
    installations_.push_back({.handler = std::move(handler),
                              .types = {types.begin(), types.end()},
                              .userData = userData});
    // Handlers are never removed, so all that matters about the reference is that it is not null.
    reference.pointer = this;
    return hotkey::noErr;
}

void HotKeyEventTarget::send(std::uint32_t kind, hotkey::EventHotKeyID hotKeyID) const {
    Event event{.kind = kind, .hotKeyID = hotKeyID};
    const hotkey::EventTypeSpec type{.eventClass = hotkey::kEventClassKeyboard, .eventKind = kind};
    // A copy: a handler may install another one, or destroy this object with all of them.
    const std::vector<Installation> newestFirst(installations_.rbegin(), installations_.rend());
    for (const auto& [handler, types, userData] : newestFirst) {
        if (std::find(types.begin(), types.end(), type) != types.end() &&
            handler({}, {&event}, userData) != hotkey::eventNotHandledErr) {
            return;
        }
    }
}

OSStatus HotKeyEventTarget::parameter(
    hotkey::EventRef event, std::uint32_t name, std::uint32_t type, std::size_t size, void* data) {
    if (event.isNull() || name != hotkey::kEventParamDirectObject ||
        type != hotkey::typeEventHotKeyID || size != sizeof(hotkey::EventHotKeyID)) {
        return hotkey::paramErr;
    }
    std::memcpy(data, &static_cast<const Event*>(event.pointer)->hotKeyID, size);
    return hotkey::noErr;
}

std::uint32_t HotKeyEventTarget::kind(hotkey::EventRef event) {
    return event.isNull() ? 0 : static_cast<const Event*>(event.pointer)->kind;
}

} // namespace platform
