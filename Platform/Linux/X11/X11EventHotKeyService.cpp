#include "Platform/Linux/X11/X11EventHotKeyService.h"

#include "Platform/Linux/CarbonKeyCodes.h"
#include "Platform/Linux/X11/XcbXkb.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace platform {

namespace {

using hotkey::OSStatus;

/// Asks for the keyboard extension, for auto-repeat that can be told from pressing again, and for
/// news of the keyboard: once a client uses the extension, the core protocol's news no longer come.
bool prepareKeyboardExtension(xcb_connection_t* connection) {
    constexpr std::uint32_t autoRepeat = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    constexpr std::uint16_t news =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP |
                                       XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                       XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    const auto* const extension = xcb_get_extension_data(connection, &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    const auto use =
        xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    const auto flags = xcb_xkb_per_client_flags(
        connection, XCB_XKB_ID_USE_CORE_KBD, autoRepeat, autoRepeat, 0, 0, 0);
    xcb_xkb_select_events(
        connection, XCB_XKB_ID_USE_CORE_KBD, news, 0, news, mapParts, mapParts, nullptr);
    const XcbPointer<xcb_xkb_use_extension_reply_t> usage(
        xcb_xkb_use_extension_reply(connection, use, nullptr));
    const XcbPointer<xcb_xkb_per_client_flags_reply_t> flagsInForce(
        xcb_xkb_per_client_flags_reply(connection, flags, nullptr));
    return usage && usage->supported != 0 && flagsInForce &&
           (flagsInForce->value & autoRepeat) != 0;
}

} // namespace

std::unique_ptr<X11EventHotKeyService> X11EventHotKeyService::open(EventLoop& eventLoop,
                                                                   MainQueue& mainQueue,
                                                                   const std::string& display) {
    auto connection = X11Connection::open(display);
    if (!connection || !prepareKeyboardExtension(connection->get())) {
        return nullptr;
    }
    const auto modifiers = X11Modifiers::query(*connection);
    if (!modifiers) {
        return nullptr;
    }
    const int descriptor = connection->fileDescriptor();
    const auto keyboardEvent = xcb_get_extension_data(connection->get(), &xcb_xkb_id)->first_event;
    std::unique_ptr<X11EventHotKeyService> service(
        new X11EventHotKeyService(mainQueue, std::move(connection), *modifiers, keyboardEvent));
    service->watch_ =
        eventLoop.watchReadable(descriptor, [self = service.get()] { self->drain(); });
    service->drainLater();
    return service;
}

X11EventHotKeyService::X11EventHotKeyService(MainQueue& mainQueue,
                                             std::unique_ptr<X11Connection> connection,
                                             X11Modifiers modifiers,
                                             std::uint8_t keyboardEvent)
    : mainQueue_(mainQueue),
      connection_(std::move(connection)),
      modifiers_(modifiers),
      keyboardEvent_(keyboardEvent) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_->get()));
    for (; screens.rem > 0; xcb_screen_next(&screens)) {
        roots_.push_back(screens.data->root);
    }
}

hotkey::EventTargetRef X11EventHotKeyService::getEventDispatcherTarget() {
    return eventTarget_.reference();
}

OSStatus X11EventHotKeyService::registerEventHotKey(std::uint32_t keyCode,
                                                    std::uint32_t modifiers,
                                                    hotkey::EventHotKeyID hotKeyID,
                                                    hotkey::EventTargetRef target,
                                                    std::uint32_t /*options*/,
                                                    hotkey::EventHotKeyRef& reference) {
    const auto* const setup = xcb_get_setup(connection_->get());
    const int key = evdevKeyCode(keyCode).value_or(0) + 8;
    // Key codes end at 255 on X11, and the code 0 would mean every key there is.
    if (target != eventTarget_.reference() || !evdevKeyCode(keyCode) || key < setup->min_keycode ||
        key > setup->max_keycode) {
        return hotkey::paramErr;
    }
    // The news of a keyboard that has just changed may still be on their way.
    adoptKeyboard();
    const auto mask = modifiers_.mask(modifiers);
    if (!mask) {
        return hotkey::paramErr;
    }
    const auto x11KeyCode = static_cast<xcb_keycode_t>(key);
    // The server would let one client grab the same keys twice.
    if (isTaken(x11KeyCode, modifiers) || !grab(x11KeyCode, *mask)) {
        return hotkey::eventHotKeyExistsErr;
    }
    registrations_.push_back(std::make_shared<Registration>(Registration{
        .hotKeyID = hotKeyID,
        .carbonModifiers = modifiers,
        .keyCode = x11KeyCode,
        .grabbedMask = mask,
    }));
    reference.pointer = registrations_.back().get();
    if (isDown(x11KeyCode)) {
        // A shortcut is recorded while its keys are held. To repeat one of them is not to press it.
        heldKeys_.set(x11KeyCode);
        awaitRelease(x11KeyCode);
    }
    return hotkey::noErr;
}

OSStatus X11EventHotKeyService::unregisterEventHotKey(hotkey::EventHotKeyRef reference) {
    if (reference.isNull()) {
        return hotkey::paramErr;
    }
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return registration.get() == reference.pointer;
        });
    if (found == registrations_.end()) {
        return hotkey::eventHotKeyInvalidErr;
    }
    const auto registration = *found;
    registrations_.erase(found);
    registration->isRegistered = false;
    if (registration->grabbedMask) {
        ungrab(registration->keyCode, *registration->grabbedMask);
        drainLater();
    }
    return hotkey::noErr;
}

OSStatus X11EventHotKeyService::installEventHandler(hotkey::EventTargetRef target,
                                                    EventHandler handler,
                                                    std::span<const hotkey::EventTypeSpec> types,
                                                    void* userData,
                                                    hotkey::EventHandlerRef& reference) {
    return eventTarget_.install(target, std::move(handler), types, userData, reference);
}

OSStatus X11EventHotKeyService::getEventParameter(
    hotkey::EventRef event, std::uint32_t name, std::uint32_t type, std::size_t size, void* data) {
    return HotKeyEventTarget::parameter(event, name, type, size, data);
}

std::uint32_t X11EventHotKeyService::getEventKind(hotkey::EventRef event) {
    return HotKeyEventTarget::kind(event);
}

bool X11EventHotKeyService::isTaken(xcb_keycode_t keyCode, std::uint32_t carbonModifiers) const {
    const auto mask = modifiers_.mask(carbonModifiers);
    return std::any_of(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
        return registration->keyCode == keyCode &&
               (registration->carbonModifiers == carbonModifiers ||
                registration->grabbedMask == mask);
    });
}

bool X11EventHotKeyService::grab(xcb_keycode_t keyCode, std::uint16_t mask) const {
    std::vector<xcb_void_cookie_t> requests;
    for (const xcb_window_t root : roots_) {
        for (const std::uint16_t locks : modifiers_.lockStates()) {
            requests.push_back(xcb_grab_key_checked(connection_->get(),
                                                    0,
                                                    root,
                                                    static_cast<std::uint16_t>(mask | locks),
                                                    keyCode,
                                                    XCB_GRAB_MODE_ASYNC,
                                                    XCB_GRAB_MODE_ASYNC));
        }
    }
    bool isComplete = true;
    for (const xcb_void_cookie_t request : requests) {
        const XcbPointer<xcb_generic_error_t> error(xcb_request_check(connection_->get(), request));
        isComplete = isComplete && !error;
    }
    // A lost server has no complaints either.
    if (!isComplete || !connection_->isAlive()) {
        ungrab(keyCode, mask);
        return false;
    }
    return true;
}

void X11EventHotKeyService::ungrab(xcb_keycode_t keyCode, std::uint16_t mask) const {
    std::vector<xcb_void_cookie_t> requests;
    for (const xcb_window_t root : roots_) {
        for (const std::uint16_t locks : modifiers_.lockStates()) {
            requests.push_back(xcb_ungrab_key_checked(
                connection_->get(), keyCode, root, static_cast<std::uint16_t>(mask | locks)));
        }
    }
    // Waiting for the answers makes sure that others can take the keys now.
    for (const xcb_void_cookie_t request : requests) {
        const XcbPointer<xcb_generic_error_t> ignored(
            xcb_request_check(connection_->get(), request));
    }
}

bool X11EventHotKeyService::isDown(xcb_keycode_t keyCode) const {
    const XcbPointer<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection_->get(), xcb_query_keymap(connection_->get()), nullptr));
    return reply && (reply->keys[keyCode / 8] >> (keyCode % 8U) & 1U) != 0;
}

/// Nobody tells of the release of a key that was pressed for somebody else, unless the key repeats.
void X11EventHotKeyService::awaitRelease(xcb_keycode_t keyCode) {
    // Less than anybody needs to press a key again.
    constexpr std::chrono::milliseconds interval{20};
    mainQueue_.asyncAfter(interval,
                          std::make_shared<WorkItem>([weakSelf = self_.reference(), keyCode] {
                              auto* const self = weakSelf.get();
                              if (self == nullptr || !self->heldKeys_.test(keyCode)) {
                                  return;
                              }
                              const bool isStillDown = self->isDown(keyCode);
                              // What came before the answer was meant for the key that was held.
                              self->drain();
                              if (weakSelf.get() == nullptr) {
                                  return;
                              }
                              if (isStillDown) {
                                  self->awaitRelease(keyCode);
                              } else {
                                  self->heldKeys_.reset(keyCode);
                              }
                          }));
}

/// Looks the modifiers up again and moves the grabs to where they are now, with nobody else having
/// a chance to slip in between. Combinations that could not be grabbed get another try. Grabs of
/// keys are by place, so only the modifiers can move.
void X11EventHotKeyService::adoptKeyboard() {
    drainLater();
    const auto modifiers = X11Modifiers::query(*connection_);
    if (!modifiers) {
        return;
    }
    const bool haveMoved = *modifiers != modifiers_;
    const bool isComplete =
        std::all_of(registrations_.begin(), registrations_.end(), [](const auto& registration) {
            return registration->grabbedMask.has_value();
        });
    if (!haveMoved && isComplete) {
        return;
    }
    xcb_grab_server(connection_->get());
    if (haveMoved) {
        for (const auto& registration : registrations_) {
            if (registration->grabbedMask) {
                ungrab(registration->keyCode, *registration->grabbedMask);
                registration->grabbedMask.reset();
            }
        }
        modifiers_ = *modifiers;
    }
    for (const auto& registration : registrations_) {
        const auto mask = modifiers_.mask(registration->carbonModifiers);
        if (!registration->grabbedMask && mask && grab(registration->keyCode, *mask)) {
            registration->grabbedMask = mask;
        }
    }
    xcb_ungrab_server(connection_->get());
    xcb_flush(connection_->get());
}

void X11EventHotKeyService::drain() {
    const auto weakSelf = self_.reference();
    while (true) {
        const XcbPointer<xcb_generic_event_t> event(xcb_poll_for_event(connection_->get()));
        if (event) {
            handle(*event);
            if (weakSelf.get() == nullptr) {
                return;
            }
        } else if (!connection_->isAlive()) {
            watch_.reset();
            return;
        } else if (hasKeyboardChanged_) {
            // Once for all the news that came in a row.
            hasKeyboardChanged_ = false;
            adoptKeyboard();
        } else {
            return;
        }
    }
}

/// Waiting for an answer may read events on the way, and the descriptor is not readable for them
/// again. They are handled from the loop, not inside the call that waited.
void X11EventHotKeyService::drainLater() {
    if (isDrainQueued_) {
        return;
    }
    isDrainQueued_ = true;
    mainQueue_.async([weakSelf = self_.reference()] {
        if (auto* const self = weakSelf.get()) {
            self->isDrainQueued_ = false;
            self->drain();
        }
    });
}

void X11EventHotKeyService::handle(const xcb_generic_event_t& event) {
    // Events that other clients made up carry a flag in their type and match nothing here.
    if (event.response_type == XCB_KEY_PRESS) {
        handlePress(reinterpret_cast<const xcb_key_press_event_t&>(event));
    } else if (event.response_type == XCB_KEY_RELEASE) {
        handleRelease(reinterpret_cast<const xcb_key_release_event_t&>(event));
    } else if (event.response_type == XCB_MAPPING_NOTIFY) {
        hasKeyboardChanged_ = true;
    } else if (event.response_type == keyboardEvent_) {
        // All events of the extension share one type; their own kind is in the next byte.
        hasKeyboardChanged_ = hasKeyboardChanged_ || event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY ||
                              event.pad0 == XCB_XKB_MAP_NOTIFY;
    }
}

void X11EventHotKeyService::handlePress(const xcb_key_press_event_t& event) {
    if (heldKeys_.test(event.detail)) {
        return;
    }
    const std::uint16_t held = modifiers_.heldModifiers(event.state);
    Registrations pressed;
    for (const auto& registration : registrations_) {
        if (registration->keyCode == event.detail && registration->grabbedMask == held) {
            registration->isPressed = true;
            pressed.push_back(registration);
        }
    }
    heldKeys_.set(event.detail, !pressed.empty());
    send(pressed, hotkey::kEventHotKeyPressed);
}

void X11EventHotKeyService::handleRelease(const xcb_key_release_event_t& event) {
    // The modifiers may have been let go first, so the key alone decides.
    heldKeys_.reset(event.detail);
    Registrations released;
    for (const auto& registration : registrations_) {
        if (registration->keyCode == event.detail && registration->isPressed) {
            registration->isPressed = false;
            released.push_back(registration);
        }
    }
    send(released, hotkey::kEventHotKeyReleased);
}

void X11EventHotKeyService::send(const Registrations& registrations, std::uint32_t kind) {
    const auto weakSelf = self_.reference();
    for (const auto& registration : registrations) {
        if (weakSelf.get() == nullptr) {
            return;
        }
        if (registration->isRegistered) {
            eventTarget_.send(kind, registration->hotKeyID);
        }
    }
}

} // namespace platform
