#include "Platform/Linux/X11/X11RawKeys.h"

#include <xcb/xinput.h>

namespace platform {

X11RawKeys::X11RawKeys(const X11Connection& connection)
    : connection_(connection), window_(connection.createWindow()) {
    xcb_connection_t* const server = connection.get();
    const auto* const extension = xcb_get_extension_data(server, &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return;
    }
    // From this version on, raw events ignore the grabs of other clients.
    constexpr std::uint16_t major = 2;
    constexpr std::uint16_t minor = 1;
    const XcbPointer<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        server, xcb_input_xi_query_version(server, major, minor), nullptr));
    if (version) {
        extension_ = extension->major_opcode;
    }
}

void X11RawKeys::start() {
    if (!isStarted_ && extension_ && hasAnotherClientTheKeyboard()) {
        isStarted_ = true;
        select(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    }
}

void X11RawKeys::stop() {
    if (isStarted_) {
        isStarted_ = false;
        select(0);
    }
}

std::optional<X11RawKeys::Event> X11RawKeys::event(const xcb_generic_event_t& event) const {
    if (event.response_type != XCB_GE_GENERIC) {
        return std::nullopt;
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    const bool isPress = raw.event_type == XCB_INPUT_RAW_KEY_PRESS;
    if (raw.extension != extension_ || (!isPress && raw.event_type != XCB_INPUT_RAW_KEY_RELEASE)) {
        return std::nullopt;
    }
    return Event{.isPress = isPress, .keyCode = static_cast<xcb_keycode_t>(raw.detail)};
}

/// Asks for the keyboard on behalf of a window that is not shown. The server refuses that in any
/// case, and the reason tells.
bool X11RawKeys::hasAnotherClientTheKeyboard() const {
    constexpr std::uint8_t async = XCB_GRAB_MODE_ASYNC;
    const XcbPointer<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
        connection_.get(),
        xcb_grab_keyboard(connection_.get(), 0, window_, XCB_CURRENT_TIME, async, async),
        nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

/// Waits for the server, so that no key pressed after the call is missed.
void X11RawKeys::select(std::uint32_t events) const {
    const struct {
        xcb_input_event_mask_t header;
        std::uint32_t events;
    } mask{.header = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1}, .events = events};

    const XcbPointer<xcb_generic_error_t> error(
        xcb_request_check(connection_.get(),
                          xcb_input_xi_select_events_checked(
                              connection_.get(), connection_.screen().root, 1, &mask.header)));
}

} // namespace platform
