#pragma once

#include "HotKey/EventHotKeyService.h"

#import <Carbon/Carbon.h>

#include <deque>
#include <utility>
#include <vector>

namespace platform {

/// Hot keys by Carbon's event manager. Handlers stay installed until the process ends. Main thread
/// only.
class MacEventHotKeyService final : public hotkey::EventHotKeyService {
  public:
    [[nodiscard]] hotkey::EventTargetRef getEventDispatcherTarget() override {
        return {GetEventDispatcherTarget()};
    }

    [[nodiscard]] hotkey::OSStatus registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers,
                                                       hotkey::EventHotKeyID hotKeyID,
                                                       hotkey::EventTargetRef target,
                                                       std::uint32_t options,
                                                       hotkey::EventHotKeyRef& reference) override {
        const EventHotKeyID carbonID{hotKeyID.signature, hotKeyID.id};
        auto* const carbonTarget = static_cast<EventTargetRef>(target.pointer);
        EventHotKeyRef registered = nullptr;
        const OSStatus status =
            RegisterEventHotKey(keyCode, modifiers, carbonID, carbonTarget, options, &registered);
        reference = {registered};
        return status;
    }

    hotkey::OSStatus unregisterEventHotKey(hotkey::EventHotKeyRef reference) override {
        return UnregisterEventHotKey(static_cast<EventHotKeyRef>(reference.pointer));
    }

    [[nodiscard]] hotkey::OSStatus
    installEventHandler(hotkey::EventTargetRef target,
                        EventHandler handler,
                        std::span<const hotkey::EventTypeSpec> types,
                        void* userData,
                        hotkey::EventHandlerRef& reference) override {
        std::vector<EventTypeSpec> list;
        for (const hotkey::EventTypeSpec& type : types) {
            list.push_back({type.eventClass, type.eventKind});
        }
        auto& installation = installations_.emplace_back(std::move(handler), userData);
        auto* const carbonTarget = static_cast<EventTargetRef>(target.pointer);
        EventHandlerRef installed = nullptr;
        const OSStatus status = InstallEventHandler(
            carbonTarget, handleEvent, list.size(), list.data(), &installation, &installed);
        reference = {installed};
        return status;
    }

    [[nodiscard]] hotkey::OSStatus getEventParameter(hotkey::EventRef event,
                                                     std::uint32_t name,
                                                     std::uint32_t type,
                                                     std::size_t size,
                                                     void* data) override {
        auto* const carbonEvent = static_cast<EventRef>(event.pointer);
        return GetEventParameter(carbonEvent, name, type, nullptr, size, nullptr, data);
    }

    [[nodiscard]] std::uint32_t getEventKind(hotkey::EventRef event) override {
        return GetEventKind(static_cast<EventRef>(event.pointer));
    }

  private:
    using Installation = std::pair<EventHandler, void*>;

    /// Called by the system, so nothing may be thrown.
    static OSStatus handleEvent(EventHandlerCallRef next, EventRef event, void* data) noexcept {
        const auto& [handler, userData] = *static_cast<const Installation*>(data);
        return handler({next}, {event}, userData);
    }

    /// A deque, since the system keeps the addresses.
    std::deque<Installation> installations_;
};

} // namespace platform
