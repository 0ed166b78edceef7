#include "HotKey/HotKeysController.h"

#include "Foundation/FatalError.h"

#include <algorithm>
#include <array>
#include <limits>

namespace hotkey {

HotKeysController::HotKeysController(EventHotKeyService& service, std::uint32_t hotKeysCount)
    : service_(service), hotKeysCount_(hotKeysCount) {}

HotKeysController::~HotKeysController() {
    self_.end();
    for (const auto& [id, box] : hotKeys_) {
        service_.unregisterEventHotKey(box.carbonEventHotKey);
    }
}

void HotKeysController::register_(const HotKey& hotKey) {
    if (hotKeyBox(hotKey) != nullptr) {
        return;
    }
    if (hotKeysCount_ == std::numeric_limits<std::uint32_t>::max()) {
        foundation::fatalError("there are no ids left for hot keys");
    }
    const std::uint32_t id = ++hotKeysCount_;
    hotKeys_.emplace(id,
                     HotKeyBox{.identifier = hotKey.identifier(),
                               .hotKey = hotKey.weakReference(),
                               .carbonHotKeyID = id,
                               .carbonEventHotKey = {}});

    EventHotKeyRef reference;
    const OSStatus status =
        service_.registerEventHotKey(hotKey.keyCombo().carbonKeyCode,
                                     hotKey.keyCombo().carbonModifiers,
                                     EventHotKeyID{.signature = signature, .id = id},
                                     service_.getEventDispatcherTarget(),
                                     0,
                                     reference);
    if (status != noErr || reference.isNull()) {
        return;
    }
    hotKeys_.at(id).carbonEventHotKey = reference;
    if (eventHandler_.isNull()) {
        installEventHandler();
    }
}

void HotKeysController::unregister(const HotKey& hotKey) {
    const HotKeyBox* const box = hotKeyBox(hotKey);
    if (box == nullptr) {
        return;
    }
    const std::uint32_t id = box->carbonHotKeyID;
    service_.unregisterEventHotKey(box->carbonEventHotKey);
    hotKeys_.erase(id);
}

const HotKeysController::HotKeyBox* HotKeysController::hotKeyBox(const HotKey& hotKey) const {
    const auto found = std::find_if(hotKeys_.begin(), hotKeys_.end(), [&](const auto& entry) {
        return entry.second.identifier == hotKey.identifier();
    });
    return found == hotKeys_.end() ? nullptr : &found->second;
}

HotKey* HotKeysController::hotKey(std::uint32_t carbonHotKeyID) const {
    const auto found = hotKeys_.find(carbonHotKeyID);
    return found == hotKeys_.end() ? nullptr : found->second.hotKey.get();
}

void HotKeysController::installEventHandler() {
    constexpr std::array types{
        EventTypeSpec{.eventClass = kEventClassKeyboard, .eventKind = kEventHotKeyPressed},
        EventTypeSpec{.eventClass = kEventClassKeyboard, .eventKind = kEventHotKeyReleased}};
    // The handler is never removed, so it can be called after the controller is gone.
    const OSStatus status = service_.installEventHandler(
        service_.getEventDispatcherTarget(),
        [weakSelf = weakReference()](EventHandlerCallRef /*next*/, EventRef event, void* /*data*/) {
            auto* const self = weakSelf.get();
            return self == nullptr ? eventNotHandledErr : self->dispatch(event);
        },
        types,
        nullptr,
        eventHandler_);
    if (status != noErr) {
        eventHandler_ = {};
    }
}

OSStatus HotKeysController::dispatch(EventRef event) {
    if (event.isNull()) {
        return eventNotHandledErr;
    }
    EventHotKeyID hotKeyID;
    const OSStatus status = service_.getEventParameter(
        event, kEventParamDirectObject, typeEventHotKeyID, sizeof hotKeyID, &hotKeyID);
    if (status != noErr) {
        return status;
    }
    if (hotKeyID.signature != signature) {
        return eventNotHandledErr;
    }
    const HotKey* const target = hotKey(hotKeyID.id);
    if (target == nullptr) {
        hotKeys_.erase(hotKeyID.id);
        return eventNotHandledErr;
    }
    const std::uint32_t kind = service_.getEventKind(event);
    if ((kind != kEventHotKeyPressed && kind != kEventHotKeyReleased) || target->isPaused()) {
        return eventNotHandledErr;
    }
    // A copy: the handler may replace itself or destroy its hot key while it runs.
    const HotKey::Handler handler =
        kind == kEventHotKeyPressed ? target->keyDownHandler : target->keyUpHandler;
    if (!handler) {
        return eventNotHandledErr;
    }
    handler();
    return noErr;
}

} // namespace hotkey
