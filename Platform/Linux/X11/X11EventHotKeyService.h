#pragma once

#include "Foundation/WeakReference.h"
#include "HotKey/HotKeyEventDispatcher.h"
#include "HotKey/KeyCombo.h"
#include "HotKey/ModifierFlags.h"
#include "Platform/Linux/LinuxInterfaces.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11Modifiers.h"
#include "Platform/Linux/X11/X11RawKeys.h"
#include "Platform/MainQueue.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// System-wide hot keys: grabs keys on the X server, over a connection of its own.
///
/// It grabs key positions, not keysyms, so a hot key works under every layout and every state of
/// Caps Lock, NumLock and ScrollLock, and moves its grabs when the keyboard changes. A combination
/// is refused as a whole if another client has any of its variants or the keyboard cannot type it.
/// A held key is one press. Once the server is gone, no more events are sent.
///
/// A desktop that acts on Super alone takes the keys pressed with it away from these grabs, so they
/// are received as raw keys then. No other key of the user's is seen.
class X11EventHotKeyService final : public hotkey::HotKeyEventDispatcher {
  public:
    /// Connects to `display`, or to DISPLAY if it is empty. Null if there is no server or it lacks
    /// the keyboard extension. The loop and the queue outlive the service.
    [[nodiscard]] static std::unique_ptr<X11EventHotKeyService>
    open(EventLoop& eventLoop, MainQueue& mainQueue, const std::string& display = {});

    [[nodiscard]] hotkey::OSStatus registerEventHotKey(std::uint32_t keyCode,
                                                       std::uint32_t modifiers,
                                                       hotkey::EventHotKeyID hotKeyID,
                                                       hotkey::EventTargetRef target,
                                                       std::uint32_t options,
                                                       hotkey::EventHotKeyRef& reference) override;
    hotkey::OSStatus unregisterEventHotKey(hotkey::EventHotKeyRef reference) override;

    void setRefusalHandlers(RefusalHandlers handlers) { refusalHandlers_ = std::move(handlers); }

    /// The modifiers in the state of an X11 key event: command, option, control and shift if held,
    /// Caps Lock if on. Waits for the server, since the keyboard may just have changed.
    [[nodiscard]] hotkey::ModifierFlags modifierFlags(std::uint32_t state);

  private:
    struct Registration {
        hotkey::EventHotKeyID hotKeyID;
        std::uint32_t carbonModifiers = 0;
        xcb_keycode_t keyCode = 0;
        /// The modifiers of the grab, without locks; nullopt while the keyboard cannot type the
        /// combination or another client has it.
        std::optional<std::uint16_t> grabbedMask;
    };

    X11EventHotKeyService(MainQueue& mainQueue,
                          std::unique_ptr<X11Connection> connection,
                          X11Modifiers modifiers);

    template <typename Request>
    [[nodiscard]] bool requestVariants(std::uint16_t mask, const Request& request) const;
    [[nodiscard]] bool grab(xcb_keycode_t keyCode, std::uint16_t mask) const;
    void ungrab(xcb_keycode_t keyCode, std::uint16_t mask) const;
    [[nodiscard]] bool isDown(xcb_keycode_t keyCode) const;
    void awaitRelease(xcb_keycode_t keyCode);
    void pollRelease(xcb_keycode_t keyCode);

    void adoptKeyboard();
    void followModifiers();
    void checkRefused();
    void drain();
    void drainLater();
    void handle(const xcb_generic_event_t& event);
    void handlePress(xcb_keycode_t keyCode, std::uint16_t state);
    void handleRelease(xcb_keycode_t keyCode);

    MainQueue& mainQueue_;
    std::unique_ptr<X11Connection> connection_;
    std::vector<xcb_window_t> roots_;
    std::vector<std::shared_ptr<Registration>> registrations_;
    X11Modifiers modifiers_;
    std::uint16_t modifierState_ = 0; ///< As in key events.
    X11RawKeys rawKeys_;
    /// The keys whose press was delivered or preceded the grab and whose release is outstanding,
    /// with the registration that awaits it, if any.
    std::map<xcb_keycode_t, std::weak_ptr<Registration>> heldKeys_;
    RefusalHandlers refusalHandlers_;
    std::optional<hotkey::KeyCombo> refused_;
    std::uint8_t keyboardEvent_;
    bool hasKeyboardChanged_ = false;
    bool isDrainQueued_ = false;
    foundation::WeakReferenceSource<X11EventHotKeyService> self_{this};
    std::unique_ptr<FileDescriptorWatch> watch_;
};

} // namespace platform
