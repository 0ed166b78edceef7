#include "Platform/Memory/MemoryEventHotKeyService.h"

#include <algorithm>
#include <sstream>

namespace platform {

using hotkey::OSStatus;

OSStatus MemoryEventHotKeyService::registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers,
                                                       hotkey::EventHotKeyID hotKeyID,
                                                       hotkey::EventTargetRef target,
                                                       std::uint32_t options,
                                                       hotkey::EventHotKeyRef& reference) {
    std::ostringstream call;
    call << "register " << keyCode << " 0x" << std::hex << modifiers << std::dec << " as ";
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        call << static_cast<char>(hotKeyID.signature >> shift);
    }
    call << ' ' << hotKeyID.id;

    const Combination combination{keyCode, modifiers};
    OSStatus status = registrationStatus_;
    if (status == hotkey::noErr && (target != getEventDispatcherTarget() || options != 0)) {
        status = hotkey::paramErr;
    } else if (status == hotkey::noErr &&
               (takenElsewhere_.contains(combination) || find(combination) != nullptr)) {
        status = hotkey::eventHotKeyExistsErr;
    }
    note(call.str() + (status == hotkey::noErr ? "" : " refused"));
    if (status == hotkey::noErr && handsOutReferences_) {
        registrations_.push_back({.combination = combination, .hotKeyID = hotKeyID});
        reference.pointer = &registrations_.back();
    } else if (status != hotkey::noErr && setsReferencesOfRefusals_) {
        reference.pointer = this;
    }
    return status;
}

OSStatus MemoryEventHotKeyService::unregisterEventHotKey(hotkey::EventHotKeyRef reference) {
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return &registration == reference.pointer;
        });
    if (found == registrations_.end()) {
        note("unregister nothing");
        return hotkey::eventHotKeyInvalidErr;
    }
    note("unregister", std::to_string(found->hotKeyID.id));
    registrations_.erase(found);
    return hotkey::noErr;
}

OSStatus MemoryEventHotKeyService::installEventHandler(hotkey::EventTargetRef target,
                                                       EventHandler handler,
                                                       std::span<const hotkey::EventTypeSpec> types,
                                                       void* userData,
                                                       hotkey::EventHandlerRef& reference) {
    const OSStatus status = installationStatus_ != hotkey::noErr
                                ? installationStatus_
                                : HotKeyEventDispatcher::installEventHandler(
                                      target, std::move(handler), types, userData, reference);
    note(status == hotkey::noErr ? "install" : "install refused");
    return status;
}

OSStatus MemoryEventHotKeyService::getEventParameter(
    hotkey::EventRef event, std::uint32_t name, std::uint32_t type, std::size_t size, void* data) {
    return parameterStatus_ != hotkey::noErr
               ? parameterStatus_
               : HotKeyEventDispatcher::getEventParameter(event, name, type, size, data);
}

bool MemoryEventHotKeyService::takeElsewhere(Combination combination) {
    if (find(combination) != nullptr) {
        return false;
    }
    takenElsewhere_.insert(combination);
    return true;
}

OSStatus MemoryEventHotKeyService::press(Combination combination) {
    return sendFor(combination, hotkey::kEventHotKeyPressed);
}

OSStatus MemoryEventHotKeyService::release(Combination combination) {
    return sendFor(combination, hotkey::kEventHotKeyReleased);
}

std::vector<MemoryEventHotKeyService::Combination> MemoryEventHotKeyService::registered() const {
    std::vector<Combination> combinations;
    for (const Registration& registration : registrations_) {
        combinations.push_back(registration.combination);
    }
    return combinations;
}

const MemoryEventHotKeyService::Registration*
MemoryEventHotKeyService::find(Combination combination) const {
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return registration.combination == combination;
        });
    return found == registrations_.end() ? nullptr : &*found;
}

OSStatus MemoryEventHotKeyService::sendFor(Combination combination, std::uint32_t kind) {
    const Registration* const registration = find(combination);
    return registration == nullptr ? hotkey::eventNotHandledErr
                                   : send({.hotKeyID = registration->hotKeyID, .kind = kind});
}

} // namespace platform
