#include "tests/Support/XEmbedTray.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace testing_support {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); } // NOLINT(*-no-malloc)
};

template <typename Type>
using Pointer = std::unique_ptr<Type, Free>;

} // namespace

XEmbedTray::XEmbedTray(const std::string& display, std::int16_t x, std::int16_t y)
    : connection_(xcb_connect(display.c_str(), nullptr)), x_(x), y_(y) {
    if (xcb_connection_has_error(connection_) != 0) {
        xcb_disconnect(connection_);
        throw std::runtime_error("no connection to " + display);
    }
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    root_ = screen.root;
    opcodeAtom_ = atom("_NET_SYSTEM_TRAY_OPCODE");
    embedAtom_ = atom("_XEMBED");
    const xcb_atom_t selection = atom("_NET_SYSTEM_TRAY_S0");

    window_ = xcb_generate_id(connection_);
    const std::array<std::uint32_t, 3> values = {
        screen.white_pixel, 1, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_create_window(connection_,
                      XCB_COPY_FROM_PARENT,
                      window_,
                      root_,
                      x_,
                      y_,
                      iconSide,
                      iconSide,
                      0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      screen.root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values.data());
    xcb_map_window(connection_, window_);
    xcb_set_selection_owner(connection_, window_, selection, XCB_CURRENT_TIME);

    xcb_client_message_event_t news{};
    news.response_type = XCB_CLIENT_MESSAGE;
    news.format = 32;
    news.window = root_;
    news.type = atom("MANAGER");
    news.data.data32[1] = selection;
    news.data.data32[2] = window_;
    xcb_send_event(connection_,
                   0,
                   root_,
                   XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&news));
    xcb_flush(connection_);
}

XEmbedTray::~XEmbedTray() {
    // The icons belong to their programs; only a crashing tray destroys them.
    for (const xcb_window_t icon : icons_) {
        xcb_unmap_window(connection_, icon);
        xcb_reparent_window(connection_, icon, root_, 0, 0);
    }
    xcb_flush(connection_);
    xcb_disconnect(connection_);
}

std::size_t XEmbedTray::iconCount() {
    handleEvents();
    return icons_.size();
}

std::vector<std::uint8_t> XEmbedTray::iconPixels() {
    if (iconCount() != 1) {
        return {};
    }
    const Pointer<xcb_get_image_reply_t> image(xcb_get_image_reply(
        connection_,
        xcb_get_image(
            connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_, x_, y_, iconSide, iconSide, ~0U),
        nullptr));
    if (!image) {
        return {};
    }
    const std::uint8_t* const data = xcb_get_image_data(image.get());
    return {data, data + xcb_get_image_data_length(image.get())};
}

void XEmbedTray::clickIcon(int button) {
    const auto detail = static_cast<std::uint8_t>(button);
    const auto middle = [](std::int16_t start) {
        return static_cast<std::int16_t>(start + iconSide / 2);
    };
    xcb_test_fake_input(
        connection_, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root_, middle(x_), middle(y_), 0);
    xcb_test_fake_input(connection_, XCB_BUTTON_PRESS, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_test_fake_input(
        connection_, XCB_BUTTON_RELEASE, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(connection_);
}

void XEmbedTray::handleEvents() {
    while (const Pointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        switch (event->response_type & 0x7F) {
        case XCB_CLIENT_MESSAGE: {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            constexpr std::uint32_t requestDock = 0;
            if (message.type == opcodeAtom_ && message.data.data32[1] == requestDock) {
                take(message.data.data32[2]);
            }
            break;
        }
        case XCB_REPARENT_NOTIFY: {
            const auto& change = reinterpret_cast<const xcb_reparent_notify_event_t&>(*event);
            if (change.parent != window_) {
                std::erase(icons_, change.window);
            }
            break;
        }
        case XCB_UNMAP_NOTIFY:
            std::erase(icons_, reinterpret_cast<const xcb_unmap_notify_event_t&>(*event).window);
            break;
        case XCB_DESTROY_NOTIFY:
            std::erase(icons_, reinterpret_cast<const xcb_destroy_notify_event_t&>(*event).window);
            break;
        default:
            break;
        }
    }
}

void XEmbedTray::take(std::uint32_t icon) {
    // A program may ask more than once for the same window.
    if (std::find(icons_.begin(), icons_.end(), icon) != icons_.end()) {
        return;
    }
    // It may have withdrawn the window by now.
    const Pointer<xcb_generic_error_t> error(xcb_request_check(
        connection_, xcb_reparent_window_checked(connection_, icon, window_, 0, 0)));
    if (error) {
        return;
    }
    icons_.push_back(icon);
    const std::array<std::uint32_t, 4> place = {0, 0, iconSide, iconSide};
    xcb_configure_window(connection_,
                         icon,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         place.data());
    xcb_map_window(connection_, icon);
    xcb_client_message_event_t news{};
    news.response_type = XCB_CLIENT_MESSAGE;
    news.format = 32;
    news.window = icon;
    news.type = embedAtom_;
    constexpr std::uint32_t embeddedNotify = 0;
    news.data.data32[1] = embeddedNotify;
    news.data.data32[3] = window_;
    xcb_send_event(
        connection_, 0, icon, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&news));
    xcb_flush(connection_);
}

std::uint32_t XEmbedTray::atom(const std::string& name) {
    const Pointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace testing_support
