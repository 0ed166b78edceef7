#include "Platform/Memory/MemoryEventHotKeyService.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace platform {

namespace {

using hotkey::OSStatus;

std::string registrationCall(MemoryEventHotKeyService::Combination combination,
                             hotkey::EventHotKeyID hotKeyID) {
    std::array<char, 80> text{};
    const std::uint32_t signature = hotKeyID.signature;
    const int length = std::snprintf(text.data(),
                                     text.size(),
                                     "register %u 0x%x as %c%c%c%c %u",
                                     combination.first,
                                     combination.second,
                                     static_cast<int>((signature >> 24U) & 0xFFU),
                                     static_cast<int>((signature >> 16U) & 0xFFU),
                                     static_cast<int>((signature >> 8U) & 0xFFU),
                                     static_cast<int>(signature & 0xFFU),
                                     hotKeyID.id);
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace

hotkey::EventTargetRef MemoryEventHotKeyService::getEventDispatcherTarget() {
    return {this};
}

OSStatus MemoryEventHotKeyService::statusFor(Combination combination,
                                             hotkey::EventTargetRef target) const {
    if (registrationStatus_ != hotkey::noErr) {
        return registrationStatus_;
    }
    if (target.pointer != this) {
        return hotkey::paramErr;
    }
    const bool isTaken =
        takenElsewhere_.contains(combination) ||
        std::any_of(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return registration->combination == combination;
        });
    return isTaken ? hotkey::eventHotKeyExistsErr : hotkey::noErr;
}

OSStatus MemoryEventHotKeyService::registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers,
                                                       hotkey::EventHotKeyID hotKeyID,
                                                       hotkey::EventTargetRef target,
                                                       std::uint32_t /*options*/,
                                                       hotkey::EventHotKeyRef& reference) {
    const Combination combination{keyCode, modifiers};
    calls_.push_back(registrationCall(combination, hotKeyID));
    const OSStatus status = statusFor(combination, target);
    if (status != hotkey::noErr) {
        calls_.back() += " refused";
    } else if (handsOutReferences_) {
        registrations_.push_back(std::make_unique<Registration>(
            Registration{.combination = combination, .hotKeyID = hotKeyID}));
        reference.pointer = registrations_.back().get();
    }
    return status;
}

OSStatus MemoryEventHotKeyService::unregisterEventHotKey(hotkey::EventHotKeyRef reference) {
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return registration.get() == reference.pointer;
        });
    if (found == registrations_.end()) {
        calls_.emplace_back("unregister nothing");
        return reference.isNull() ? hotkey::paramErr : hotkey::eventHotKeyInvalidErr;
    }
    calls_.push_back("unregister " + std::to_string((*found)->hotKeyID.id));
    registrations_.erase(found);
    return hotkey::noErr;
}

OSStatus MemoryEventHotKeyService::installEventHandler(hotkey::EventTargetRef target,
                                                       EventHandler handler,
                                                       std::span<const hotkey::EventTypeSpec> types,
                                                       void* userData,
                                                       hotkey::EventHandlerRef& reference) {
    if (installationStatus_ != hotkey::noErr) {
        calls_.emplace_back("install refused");
        return installationStatus_;
    }
    calls_.emplace_back("install");
    installations_.push_back({.handler = std::move(handler),
                              .types = {types.begin(), types.end()},
                              .userData = userData,
                              .target = target});
    reference.pointer = this;
    return hotkey::noErr;
}

OSStatus MemoryEventHotKeyService::getEventParameter(
    hotkey::EventRef event, std::uint32_t name, std::uint32_t type, std::size_t size, void* data) {
    const auto& sent = *static_cast<const Event*>(event.pointer);
    if (sent.parameterStatus != hotkey::noErr) {
        return sent.parameterStatus;
    }
    if (name != hotkey::kEventParamDirectObject || type != hotkey::typeEventHotKeyID ||
        size != sizeof sent.hotKeyID) {
        return hotkey::paramErr;
    }
    std::memcpy(data, &sent.hotKeyID, size);
    return hotkey::noErr;
}

std::uint32_t MemoryEventHotKeyService::getEventKind(hotkey::EventRef event) {
    return static_cast<const Event*>(event.pointer)->kind;
}

bool MemoryEventHotKeyService::takeElsewhere(Combination combination) {
    const std::vector<Combination> takenHere = registered();
    if (std::find(takenHere.begin(), takenHere.end(), combination) != takenHere.end()) {
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

OSStatus MemoryEventHotKeyService::sendFor(Combination combination, std::uint32_t kind) {
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return registration->combination == combination;
        });
    return found == registrations_.end() ? hotkey::eventNotHandledErr
                                         : send({.hotKeyID = (*found)->hotKeyID, .kind = kind});
}

OSStatus MemoryEventHotKeyService::send(Event event) {
    return deliver({&event}, event.kind);
}

OSStatus MemoryEventHotKeyService::sendNull() {
    return deliver({}, hotkey::kEventHotKeyPressed);
}

OSStatus MemoryEventHotKeyService::deliver(hotkey::EventRef event, std::uint32_t kind) {
    // A copy: a handler may install another one. The last one installed comes first.
    const std::vector<Installation> newestFirst(installations_.rbegin(), installations_.rend());
    for (const Installation& installation : newestFirst) {
        const bool wants = std::any_of(
            installation.types.begin(), installation.types.end(), [&](const auto& type) {
                return type.eventClass == hotkey::kEventClassKeyboard && type.eventKind == kind;
            });
        if (!wants) {
            continue;
        }
        const OSStatus status = installation.handler({}, event, installation.userData);
        if (status != hotkey::eventNotHandledErr) {
            return status;
        }
    }
    return hotkey::eventNotHandledErr;
}

std::vector<MemoryEventHotKeyService::Combination> MemoryEventHotKeyService::registered() const {
    std::vector<Combination> combinations;
    for (const auto& registration : registrations_) {
        combinations.push_back(registration->combination);
    }
    return combinations;
}

} // namespace platform
