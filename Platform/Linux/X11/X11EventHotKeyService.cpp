#include "Platform/Linux/X11/X11EventHotKeyService.h"

#include "HotKey/Key.h"
#include "Platform/Linux/Keys/KeyCodes.h"
#include "Platform/Linux/X11/XcbXkb.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace platform {

namespace {

using hotkey::OSStatus;

/// Enables the keyboard extension, detectable auto-repeat and the events of modifiers and keyboard
/// changes. Core events of changes no longer arrive once a client uses the extension.
bool enableKeyboardExtension(xcb_connection_t* connection) {
    constexpr std::uint32_t autoRepeat = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    constexpr std::uint16_t changes =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    xcb_xkb_select_events_details_t state{};
    state.affectState = XCB_XKB_STATE_PART_MODIFIER_STATE;
    state.stateDetails = XCB_XKB_STATE_PART_MODIFIER_STATE;
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
    xcb_xkb_select_events_aux(connection,
                              XCB_XKB_ID_USE_CORE_KBD,
                              changes | XCB_XKB_EVENT_TYPE_STATE_NOTIFY,
                              0,
                              changes,
                              mapParts,
                              mapParts,
                              &state);
    const XcbPointer<xcb_xkb_use_extension_reply_t> useReply(
        xcb_xkb_use_extension_reply(connection, use, nullptr));
    const XcbPointer<xcb_xkb_per_client_flags_reply_t> flagsReply(
        xcb_xkb_per_client_flags_reply(connection, flags, nullptr));
    return useReply && useReply->supported != 0 && flagsReply &&
           (flagsReply->value & autoRepeat) != 0;
}

} // namespace

std::unique_ptr<X11EventHotKeyService> X11EventHotKeyService::open(EventLoop& eventLoop,
                                                                   MainQueue& mainQueue,
                                                                   const std::string& display) {
    auto connection = X11Connection::open(display);
    if (!connection || !enableKeyboardExtension(connection->get())) {
        return nullptr;
    }
    const auto modifiers = X11Modifiers::query(*connection);
    if (!modifiers) {
        return nullptr;
    }
    std::unique_ptr<X11EventHotKeyService> service(
        new X11EventHotKeyService(mainQueue, std::move(connection), *modifiers));
    service->watch_ = eventLoop.watchReadable(service->connection_->fileDescriptor(),
                                              [self = service.get()] { self->drain(); });
    service->drainLater();
    return service;
}

X11EventHotKeyService::X11EventHotKeyService(MainQueue& mainQueue,
                                             std::unique_ptr<X11Connection> connection,
                                             X11Modifiers modifiers)
    : mainQueue_(mainQueue),
      connection_(std::move(connection)),
      modifiers_(std::move(modifiers)),
      rawKeys_(*connection_),
      keyboardEvent_(xcb_get_extension_data(connection_->get(), &xcb_xkb_id)->first_event) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_->get()));
    for (; screens.rem > 0; xcb_screen_next(&screens)) {
        roots_.push_back(screens.data->root);
    }
}

OSStatus X11EventHotKeyService::registerEventHotKey(std::uint32_t keyCode,
                                                    std::uint32_t modifiers,
                                                    hotkey::EventHotKeyID hotKeyID,
                                                    hotkey::EventTargetRef target,
                                                    std::uint32_t /*options*/,
                                                    hotkey::EventHotKeyRef& reference) {
    const auto key = hotkey::keyFromCarbonKeyCode(keyCode);
    // A key code that is cut off would grab another key, or every key if it is 0.
    if (target != getEventDispatcherTarget() || !key || xkbKeyCode(*key) > UINT8_MAX) {
        return hotkey::paramErr;
    }
    // The event of a keyboard change may still be on its way.
    adoptKeyboard();
    const auto mask = modifiers_.mask(modifiers);
    refused_.reset();
    if (!mask) {
        refused_ = hotkey::KeyCombo(keyCode, modifiers);
        return hotkey::paramErr;
    }
    const auto x11KeyCode = static_cast<xcb_keycode_t>(xkbKeyCode(*key));
    // The server would let one client grab the same combination twice.
    const bool isTaken =
        std::any_of(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return registration->keyCode == x11KeyCode && registration->grabbedMask == mask;
        });
    if (isTaken) {
        return hotkey::eventHotKeyExistsErr;
    }
    if (!grab(x11KeyCode, *mask)) {
        refused_ = hotkey::KeyCombo(keyCode, modifiers);
        if (refusalHandlers_.didRefuse && connection_->isAlive()) {
            refusalHandlers_.didRefuse(*refused_);
        }
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
        // The recorder registers a shortcut while its keys are held. Their repeats are no press.
        heldKeys_.try_emplace(x11KeyCode);
        awaitRelease(x11KeyCode);
    }
    followModifiers();
    return hotkey::noErr;
}

OSStatus X11EventHotKeyService::unregisterEventHotKey(hotkey::EventHotKeyRef reference) {
    refused_.reset();
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return registration.get() == reference.pointer;
        });
    if (found == registrations_.end()) {
        return hotkey::eventHotKeyInvalidErr;
    }
    const auto registration = *found;
    registrations_.erase(found);
    if (registration->grabbedMask) {
        ungrab(registration->keyCode, *registration->grabbedMask);
        followModifiers();
        drainLater();
    }
    return hotkey::noErr;
}

hotkey::ModifierFlags X11EventHotKeyService::modifierFlags(std::uint32_t state) {
    adoptKeyboard();
    return modifiers_.modifierFlags(state);
}

/// Makes a request for each screen and each state of the locks, and waits for the replies. True if
/// the server accepted all of them.
template <typename Request>
bool X11EventHotKeyService::requestVariants(std::uint16_t mask, const Request& request) const {
    std::vector<xcb_void_cookie_t> cookies;
    for (const xcb_window_t root : roots_) {
        for (const std::uint16_t locks : modifiers_.lockStates()) {
            cookies.push_back(request(root, static_cast<std::uint16_t>(mask | locks)));
        }
    }
    bool isAccepted = true;
    for (const xcb_void_cookie_t cookie : cookies) {
        const XcbPointer<xcb_generic_error_t> error(xcb_request_check(connection_->get(), cookie));
        isAccepted = isAccepted && !error;
    }
    // A lost server reports no errors either.
    return isAccepted && connection_->isAlive();
}

bool X11EventHotKeyService::grab(xcb_keycode_t keyCode, std::uint16_t mask) const {
    constexpr std::uint8_t async = XCB_GRAB_MODE_ASYNC;
    const bool isGranted = requestVariants(mask, [&](xcb_window_t root, std::uint16_t variant) {
        return xcb_grab_key_checked(connection_->get(), 0, root, variant, keyCode, async, async);
    });
    if (!isGranted) {
        ungrab(keyCode, mask);
    }
    return isGranted;
}

void X11EventHotKeyService::ungrab(xcb_keycode_t keyCode, std::uint16_t mask) const {
    // Waiting for the replies ensures that other clients can grab the key afterwards.
    static_cast<void>(requestVariants(mask, [&](xcb_window_t root, std::uint16_t variant) {
        return xcb_ungrab_key_checked(connection_->get(), keyCode, root, variant);
    }));
}

bool X11EventHotKeyService::isDown(xcb_keycode_t keyCode) const {
    const XcbPointer<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection_->get(), xcb_query_keymap(connection_->get()), nullptr));
    return reply && (reply->keys[keyCode / 8] >> (keyCode % 8U) & 1U) != 0;
}

/// The server sends no release for a key that was not pressed under our grab unless it repeats, so
/// poll.
void X11EventHotKeyService::awaitRelease(xcb_keycode_t keyCode) {
    // Shorter than anyone takes to press a key again.
    constexpr std::chrono::milliseconds interval{20};
    mainQueue_.asyncAfter(interval,
                          std::make_shared<WorkItem>([weakSelf = self_.reference(), keyCode] {
                              if (auto* const self = weakSelf.get()) {
                                  self->pollRelease(keyCode);
                              }
                          }));
}

void X11EventHotKeyService::pollRelease(xcb_keycode_t keyCode) {
    if (!heldKeys_.contains(keyCode)) {
        return;
    }
    const auto weakSelf = self_.reference();
    const bool isStillDown = isDown(keyCode);
    // Events that precede the reply belong to the held key.
    drain();
    if (weakSelf.get() == nullptr) {
        return;
    }
    if (isStillDown) {
        awaitRelease(keyCode);
    } else {
        handleRelease(keyCode);
    }
}

/// Looks up the modifiers again and moves the grabs if they changed; grabs are by key position, so
/// nothing else can move. Holds the server, so that no other client can take a combination
/// meanwhile. Also retries combinations that could not be grabbed.
void X11EventHotKeyService::adoptKeyboard() {
    drainLater();
    const auto modifiers = X11Modifiers::query(*connection_);
    const bool isComplete =
        std::all_of(registrations_.begin(), registrations_.end(), [](const auto& registration) {
            return registration->grabbedMask.has_value();
        });
    if (!modifiers || (*modifiers == modifiers_ && isComplete)) {
        return;
    }
    xcb_grab_server(connection_->get());
    for (const auto& registration : registrations_) {
        if (registration->grabbedMask) {
            ungrab(registration->keyCode, *registration->grabbedMask);
        }
    }
    modifiers_ = *modifiers;
    for (const auto& registration : registrations_) {
        const auto mask = modifiers_.mask(registration->carbonModifiers);
        const bool isGrabbed = mask && grab(registration->keyCode, *mask);
        registration->grabbedMask = isGrabbed ? mask : std::nullopt;
    }
    xcb_ungrab_server(connection_->get());
    xcb_flush(connection_->get());
    followModifiers();
}

/// Receives raw keys only while exactly the modifiers of a hot key with Super are held, the key on
/// which some desktops take the keyboard.
void X11EventHotKeyService::followModifiers() {
    const std::uint16_t held = modifiers_.heldModifiers(modifierState_);
    const bool areHeld =
        std::any_of(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return registration->grabbedMask == held &&
                   (registration->carbonModifiers & hotkey::cmdKey) != 0;
        });
    if (areHeld) {
        rawKeys_.start();
    } else if (rawKeys_.isStarted()) {
        rawKeys_.stop();
        for (const auto& [keyCode, registration] : heldKeys_) {
            awaitRelease(keyCode);
        }
    }
}

/// Nobody reports that another client gave a key up, so tries to grab it.
void X11EventHotKeyService::checkRefused() {
    const auto mask = refused_ ? modifiers_.mask(refused_->carbonModifiers) : std::nullopt;
    if (!mask) {
        return;
    }
    const auto keyCode = static_cast<xcb_keycode_t>(xkbKeyCode(refused_->key().value()));
    if (grab(keyCode, *mask)) {
        ungrab(keyCode, *mask);
        refused_.reset();
        if (refusalHandlers_.didBecomeFree) {
            refusalHandlers_.didBecomeFree();
        }
    }
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
            // Once for a whole row of events.
            hasKeyboardChanged_ = false;
            adoptKeyboard();
            checkRefused();
        } else {
            return;
        }
    }
}

/// Waiting for a reply may read events, which no longer make the descriptor readable. They are
/// handled from the event loop, not inside the call that waited.
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
    // Events sent by other clients carry a flag in their type and match nothing here.
    if (event.response_type == XCB_KEY_PRESS) {
        const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
        handlePress(press.detail, press.state);
    } else if (event.response_type == XCB_KEY_RELEASE) {
        handleRelease(reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
    } else if (const auto raw = rawKeys_.event(event)) {
        if (raw->isPress) {
            handlePress(raw->keyCode, modifierState_);
        } else {
            handleRelease(raw->keyCode);
        }
    } else if (event.response_type == XCB_MAPPING_NOTIFY) {
        hasKeyboardChanged_ = true;
    } else if (event.response_type == keyboardEvent_) {
        // All events of the extension share one type; the next byte tells them apart.
        if (event.pad0 == XCB_XKB_STATE_NOTIFY) {
            modifierState_ = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event).mods;
            followModifiers();
            if (refused_ && modifiers_.mask(refused_->carbonModifiers) ==
                                modifiers_.heldModifiers(modifierState_)) {
                // The key is about to be pressed.
                checkRefused();
            }
        } else {
            hasKeyboardChanged_ = true;
        }
    }
}

/// A press may arrive twice, through the grab and as a raw key.
void X11EventHotKeyService::handlePress(xcb_keycode_t keyCode, std::uint16_t state) {
    if (heldKeys_.contains(keyCode)) {
        return;
    }
    const std::uint16_t held = modifiers_.heldModifiers(state);
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(), [&](const auto& registration) {
            return registration->keyCode == keyCode && registration->grabbedMask == held;
        });
    if (found != registrations_.end()) {
        heldKeys_.emplace(keyCode, *found);
        send({.hotKeyID = (*found)->hotKeyID, .kind = hotkey::kEventHotKeyPressed});
    }
}

void X11EventHotKeyService::handleRelease(xcb_keycode_t keyCode) {
    // The modifiers may have been released first, so the key alone decides.
    const auto held = heldKeys_.extract(keyCode);
    if (const auto registration = held ? held.mapped().lock() : nullptr) {
        send({.hotKeyID = registration->hotKeyID, .kind = hotkey::kEventHotKeyReleased});
    }
}

} // namespace platform
