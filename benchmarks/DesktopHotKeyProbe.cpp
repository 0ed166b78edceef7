#include "benchmarks/DesktopHotKeyProbe.h"

#include <linux/input-event-codes.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace benchmarks {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); } // NOLINT(*-no-malloc)
};

constexpr std::uint8_t keyCode = KEY_G + 8;
constexpr std::uint16_t superMask = XCB_MOD_MASK_4;
constexpr std::uint8_t badAccess = 10;

} // namespace

DesktopHotKeyProbe::DesktopHotKeyProbe(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) {
        xcb_disconnect(connection_);
        throw std::runtime_error("no X server at " + display);
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

DesktopHotKeyProbe::~DesktopHotKeyProbe() {
    xcb_disconnect(connection_);
}

bool DesktopHotKeyProbe::isTaken() {
    // Sent together, to hold the server as briefly as possible.
    xcb_grab_server(connection_);
    const auto grab = xcb_grab_key_checked(
        connection_, 0, root_, superMask, keyCode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_key(connection_, keyCode, root_, superMask);
    xcb_ungrab_server(connection_);
    const std::unique_ptr<xcb_generic_error_t, Free> error(xcb_request_check(connection_, grab));
    if (xcb_connection_has_error(connection_) != 0 || (error && error->error_code != badAccess)) {
        throw std::runtime_error("cannot request the hot key from the X server");
    }
    return error != nullptr;
}

} // namespace benchmarks
