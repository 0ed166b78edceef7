#include "tests/Support/OtherX11Program.h"

#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/XcbXkb.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace testing_support {

using platform::XcbPointer;

OtherX11Program::OtherX11Program(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) {
        xcb_disconnect(connection_);
        throw std::runtime_error("no X server at " + display);
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const XcbPointer<xcb_xkb_use_extension_reply_t> use(xcb_xkb_use_extension_reply(
        connection_, xcb_xkb_use_extension(connection_, 1, 0), nullptr));
    const std::uint32_t autoRepeat = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const XcbPointer<xcb_xkb_per_client_flags_reply_t> flags(xcb_xkb_per_client_flags_reply(
        connection_,
        xcb_xkb_per_client_flags(
            connection_, XCB_XKB_ID_USE_CORE_KBD, autoRepeat, autoRepeat, 0, 0, 0),
        nullptr));
}

OtherX11Program::~OtherX11Program() {
    xcb_disconnect(connection_);
}

bool OtherX11Program::take(std::uint8_t keyCode, std::uint16_t mask) {
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(
        connection_,
        xcb_grab_key_checked(
            connection_, 0, root_, mask, keyCode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    return !error;
}

void OtherX11Program::giveBack(std::uint8_t keyCode, std::uint16_t mask) {
    const XcbPointer<xcb_generic_error_t> error(
        xcb_request_check(connection_, xcb_ungrab_key_checked(connection_, keyCode, root_, mask)));
}

bool OtherX11Program::takeAndFreeze(std::uint8_t keyCode) {
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(
        connection_,
        xcb_grab_key_checked(
            connection_, 0, root_, 0, keyCode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC)));
    return !error;
}

void OtherX11Program::allowEvents(std::uint8_t mode) {
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(
        connection_, xcb_allow_events_checked(connection_, mode, XCB_CURRENT_TIME)));
}

bool OtherX11Program::hasAnotherClientTheKeyboard() {
    const XcbPointer<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
        connection_,
        xcb_grab_keyboard(
            connection_, 0, root_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS) {
        const XcbPointer<xcb_generic_error_t> error(xcb_request_check(
            connection_, xcb_ungrab_keyboard_checked(connection_, XCB_CURRENT_TIME)));
        return false;
    }
    return true;
}

int OtherX11Program::pressCount() {
    while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        pressCount_ += event->response_type == XCB_KEY_PRESS ? 1 : 0;
    }
    return pressCount_;
}

void OtherX11Program::moveModifierKeys(int from, int to) {
    const XcbPointer<xcb_get_modifier_mapping_reply_t> mapping(xcb_get_modifier_mapping_reply(
        connection_, xcb_get_modifier_mapping(connection_), nullptr));
    const std::size_t perModifier = mapping->keycodes_per_modifier;
    const xcb_keycode_t* const present = xcb_get_modifier_mapping_keycodes(mapping.get());
    std::vector<xcb_keycode_t> keys(present, present + (8 * perModifier));
    const auto row = [&](int modifier) {
        return keys.begin() +
               static_cast<std::ptrdiff_t>(modifier) * static_cast<std::ptrdiff_t>(perModifier);
    };
    std::copy(row(from), row(from + 1), row(to));
    std::fill(row(from), row(from + 1), xcb_keycode_t{0});
    const XcbPointer<xcb_set_modifier_mapping_reply_t> reply(xcb_set_modifier_mapping_reply(
        connection_,
        xcb_set_modifier_mapping(connection_, mapping->keycodes_per_modifier, keys.data()),
        nullptr));
    if (!reply || reply->status != XCB_MAPPING_STATUS_SUCCESS) {
        throw std::runtime_error("the server does not move the modifier");
    }
}

void OtherX11Program::lockLayoutGroup(std::uint8_t group) {
    const XcbPointer<xcb_generic_error_t> error(
        xcb_request_check(connection_,
                          xcb_xkb_latch_lock_state_checked(
                              connection_, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0)));
}

std::uint8_t OtherX11Program::layoutGroup() {
    const XcbPointer<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(
        connection_, xcb_xkb_get_state(connection_, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return state ? state->group : std::uint8_t{0};
}

} // namespace testing_support
