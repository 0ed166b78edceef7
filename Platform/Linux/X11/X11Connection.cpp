#include "Platform/Linux/X11/X11Connection.h"

#include <cstdint>

namespace platform {

std::unique_ptr<X11Connection> X11Connection::open(const std::string& display) {
    int screenNumber = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> connection(
        xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0) {
        return nullptr;
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    while (screenNumber > 0 && screens.rem > 1) {
        xcb_screen_next(&screens);
        --screenNumber;
    }
    return std::unique_ptr<X11Connection>(new X11Connection(connection.release(), screens.data));
}

xcb_atom_t X11Connection::atom(std::string_view name) const {
    const XcbPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        get(),
        xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace platform
