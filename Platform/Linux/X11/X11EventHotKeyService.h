#pragma once

#include "Foundation/WeakReference.h"
#include "HotKey/CarbonEvents.h"
#include "HotKey/EventHotKeyService.h"
#include "Platform/Linux/EventLoop.h"
#include "Platform/Linux/HotKeyEventTarget.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11Modifiers.h"
#include "Platform/MainQueue.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

/// System-wide hot keys by grabbing keys from the X server, on a connection of its own.
///
/// It grabs places on the keyboard, not symbols, so a hot key works under every layout; with every
/// state of Caps Lock, NumLock and ScrollLock; and again when the keyboard changes. A combination
/// of which any of these variants belongs to another program, or that the keyboard cannot type, is
/// refused as a whole. A held key is one press. When the server goes, hot keys fall silent.
class X11EventHotKeyService final : public hotkey::EventHotKeyService {
  public:
    /// Connects to `display`, or where DISPLAY points when it is empty. None when there is no
    /// server, or one without the keyboard extension. The loop and the queue outlive the service.
    [[nodiscard]] static std::unique_ptr<X11EventHotKeyService>
    open(EventLoop& eventLoop, MainQueue& mainQueue, const std::string& display = {});

    [[nodiscard]] hotkey::EventTargetRef getEventDispatcherTarget() override;
    [[nodiscard]] hotkey::OSStatus registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers,
                                                       hotkey::EventHotKeyID hotKeyID,
                                                       hotkey::EventTargetRef target,
                                                       std::uint32_t options,
                                                       hotkey::EventHotKeyRef& reference) override;
    hotkey::OSStatus unregisterEventHotKey(hotkey::EventHotKeyRef reference) override;
    [[nodiscard]] hotkey::OSStatus installEventHandler(hotkey::EventTargetRef target,
                                                       EventHandler handler,
                                                       std::span<const hotkey::EventTypeSpec> types,
                                                       void* userData,
                                                       hotkey::EventHandlerRef& reference) override;
    [[nodiscard]] hotkey::OSStatus getEventParameter(hotkey::EventRef event,
                                                     std::uint32_t name,
                                                     std::uint32_t type,
                                                     std::size_t size,
                                                     void* data) override;
    [[nodiscard]] std::uint32_t getEventKind(hotkey::EventRef event) override;

  private:
    struct Registration {
        hotkey::EventHotKeyID hotKeyID;
        std::uint32_t carbonModifiers = 0;
        xcb_keycode_t keyCode = 0;
        /// What the keys are grabbed with, besides the locks; none while the keyboard cannot type
        /// the combination, or another program has it.
        std::optional<std::uint16_t> grabbedMask;
        bool isPressed = false;
        bool isRegistered = true;
    };

    using Registrations = std::vector<std::shared_ptr<Registration>>;

    X11EventHotKeyService(MainQueue& mainQueue,
                          std::unique_ptr<X11Connection> connection,
                          X11Modifiers modifiers,
                          std::uint8_t keyboardEvent);

    [[nodiscard]] bool isTaken(xcb_keycode_t keyCode, std::uint32_t carbonModifiers) const;
    [[nodiscard]] bool grab(xcb_keycode_t keyCode, std::uint16_t mask) const;
    void ungrab(xcb_keycode_t keyCode, std::uint16_t mask) const;
    [[nodiscard]] bool isDown(xcb_keycode_t keyCode) const;
    void awaitRelease(xcb_keycode_t keyCode);

    void adoptKeyboard();
    void drain();
    void drainLater();
    void handle(const xcb_generic_event_t& event);
    void handlePress(const xcb_key_press_event_t& event);
    void handleRelease(const xcb_key_release_event_t& event);
    void send(const Registrations& registrations, std::uint32_t kind);

    MainQueue& mainQueue_;
    std::unique_ptr<X11Connection> connection_;
    std::vector<xcb_window_t> roots_;
    HotKeyEventTarget eventTarget_;
    Registrations registrations_;
    X11Modifiers modifiers_;
    /// The keys whose press was delivered, or came before they were taken, and whose release was
    /// not seen yet, by key code.
    std::bitset<256> heldKeys_;
    std::uint8_t keyboardEvent_;
    bool hasKeyboardChanged_ = false;
    bool isDrainQueued_ = false;
    foundation::WeakReferenceSource<X11EventHotKeyService> self_{this};
    std::unique_ptr<FileDescriptorWatch> watch_;
};

} // namespace platform
