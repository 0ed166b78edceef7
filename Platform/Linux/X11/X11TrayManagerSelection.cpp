#include "Platform/Linux/X11/X11TrayManagerSelection.h"

#include <xcb/xfixes.h>

namespace platform {

namespace {

int defaultScreenNumber(const X11Connection& connection) {
    int number = 0;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    while (screens.rem > 1 && screens.data->root != connection.screen().root) {
        xcb_screen_next(&screens);
        ++number;
    }
    return number;
}

} // namespace

std::unique_ptr<X11TrayManagerSelection> X11TrayManagerSelection::open(
    EventLoop& eventLoop, std::function<void()> didChange, const std::string& display) {
    auto connection = X11Connection::open(display);
    if (!connection) {
        return nullptr;
    }
    xcb_connection_t* const server = connection->get();
    const xcb_query_extension_reply_t* const extension =
        xcb_get_extension_data(server, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0) {
        return nullptr;
    }
    // The server rejects XFixes requests until the client has sent its version.
    const XcbPointer<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        server,
        xcb_xfixes_query_version(server, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    const xcb_atom_t selection =
        connection->atom("_NET_SYSTEM_TRAY_S" + std::to_string(defaultScreenNumber(*connection)));
    if (!version || selection == XCB_ATOM_NONE) {
        return nullptr;
    }
    xcb_xfixes_select_selection_input(server,
                                      connection->screen().root,
                                      selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const XcbPointer<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(server, xcb_get_selection_owner(server, selection), nullptr));

    const auto changeEvent =
        static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    std::unique_ptr<X11TrayManagerSelection> watch(
        new X11TrayManagerSelection(std::move(connection), std::move(didChange), changeEvent));
    watch->owner_ = owner ? owner->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    watch->watch_ = eventLoop.watchReadable(watch->connection_->fileDescriptor(),
                                            [self = watch.get()] { self->drain(); });
    // Waiting for the replies may have read events, after which the descriptor is not readable.
    watch->readEvents();
    return watch;
}

X11TrayManagerSelection::X11TrayManagerSelection(std::unique_ptr<X11Connection> connection,
                                                 std::function<void()> didChange,
                                                 std::uint8_t changeEvent)
    : connection_(std::move(connection)),
      didChange_(std::move(didChange)),
      changeEvent_(changeEvent) {}

void X11TrayManagerSelection::readEvents() {
    while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        // Events sent by other clients have a flag in their type, so they never match.
        if (event->response_type == changeEvent_) {
            owner_ = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(*event).owner;
        }
    }
    if (!connection_->isAlive()) {
        watch_.reset();
        owner_ = XCB_WINDOW_NONE;
    }
}

void X11TrayManagerSelection::drain() {
    const xcb_window_t before = owner_;
    readEvents();
    if (owner_ != before) {
        // The call may destroy this object.
        const auto didChange = didChange_;
        didChange();
    }
}

} // namespace platform
