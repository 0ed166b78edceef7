#include "tests/Desktop/XcbClient.h"

#include <poll.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace testing_support {

namespace {

[[noreturn]] void endWithoutServer() {
    static_cast<void>(std::fputs("there is no X server\n", stderr));
    std::exit(3);
}

} // namespace

XcbClient::XcbClient(const char* display) : connection_(xcb_connect(display, nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) {
        endWithoutServer();
    }
    window_ = makeWindow();
}

XcbClient::~XcbClient() {
    xcb_disconnect(connection_);
}

xcb_window_t XcbClient::makeWindow() const {
    const xcb_window_t window = xcb_generate_id(connection_);
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_,
                      0,
                      window,
                      xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root,
                      0,
                      0,
                      1,
                      1,
                      0,
                      XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK,
                      &mask);
    return window;
}

xcb_atom_t XcbClient::atom(const std::string& name) {
    xcb_atom_t& atom = atoms_[name];
    if (atom == XCB_ATOM_NONE) {
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        if (!reply) {
            endWithoutServer();
        }
        atom = reply->atom;
    }
    return atom;
}

std::string XcbClient::name(xcb_atom_t atom) {
    const Reply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
    return reply ? std::string(xcb_get_atom_name_name(reply.get()), reply->name_len) : "none";
}

xcb_timestamp_t XcbClient::time() {
    const xcb_window_t window = makeWindow();
    const xcb_atom_t property = atom("TIME");
    xcb_change_property(
        connection_, XCB_PROP_MODE_APPEND, window, property, XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(connection_);
    while (true) {
        Reply<xcb_generic_event_t> event(xcb_wait_for_event(connection_));
        if (!event) {
            endWithoutServer();
        }
        const auto* notify = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
        if (event->response_type == XCB_PROPERTY_NOTIFY && notify->window == window) {
            xcb_destroy_window(connection_, window);
            return notify->time;
        }
        deferred_.push_back(std::move(event));
    }
}

Reply<xcb_generic_event_t> XcbClient::event(std::optional<std::chrono::milliseconds> limit) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + limit.value_or(std::chrono::milliseconds(0));
    xcb_flush(connection_);
    if (!deferred_.empty()) {
        auto event = std::move(deferred_.front());
        deferred_.pop_front();
        return event;
    }
    while (true) {
        if (Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
            return event;
        }
        if (xcb_connection_has_error(connection_) != 0) {
            endWithoutServer();
        }
        int wait = -1;
        if (limit) {
            const auto remaining =
                std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
            if (remaining.count() <= 0) {
                return nullptr;
            }
            wait = static_cast<int>(remaining.count());
        }
        pollfd descriptor{
            .fd = xcb_get_file_descriptor(connection_), .events = POLLIN, .revents = 0};
        poll(&descriptor, 1, wait);
    }
}

} // namespace testing_support
