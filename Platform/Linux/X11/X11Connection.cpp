#include "Platform/Linux/X11/X11Connection.h"

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

std::vector<xcb_atom_t> X11Connection::atoms(const std::vector<std::string_view>& names) const {
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(names.size());
    for (const std::string_view name : names) {
        cookies.push_back(
            xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
    }
    std::vector<xcb_atom_t> atoms;
    atoms.reserve(names.size());
    for (const xcb_intern_atom_cookie_t cookie : cookies) {
        const XcbPointer<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(get(), cookie, nullptr));
        atoms.push_back(reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
    }
    return atoms;
}

xcb_window_t X11Connection::ownerOf(xcb_atom_t selection) const {
    const XcbPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(get(), xcb_get_selection_owner(get(), selection), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

xcb_window_t X11Connection::createWindow() const {
    const xcb_window_t window = xcb_generate_id(get());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(get(),
                      0,
                      window,
                      screen().root,
                      0,
                      0,
                      1,
                      1,
                      0,
                      XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK,
                      &events);
    return window;
}

XcbPointer<xcb_get_property_reply_t> X11Connection::property(xcb_window_t window,
                                                             xcb_atom_t property,
                                                             std::uint32_t first,
                                                             std::uint32_t count,
                                                             bool deletes) const {
    return XcbPointer<xcb_get_property_reply_t>(xcb_get_property_reply(
        get(),
        xcb_get_property(
            get(), deletes ? 1 : 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, first, count),
        nullptr));
}

} // namespace platform
