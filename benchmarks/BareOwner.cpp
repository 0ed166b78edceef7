// The least a program does between the hot key and the paste: it takes Super+G, owns the clipboard
// at each press and hands out HTML that it made at the start, from that many lines:
// pastewise_bare_owner LINES

#include "Foundation/TextBuffer.h"
#include "Text/LineList.h"
#include "Text/SheetDocument.h"
#include "benchmarks/Inputs.h"
#include "tests/Desktop/XcbClient.h"

#include <linux/input-event-codes.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>

namespace {

constexpr std::uint8_t keyCode = KEY_G + 8;

void answer(xcb_connection_t* connection,
            const xcb_selection_request_event_t& request,
            xcb_atom_t htmlType,
            std::string_view html) {
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    if (request.target == htmlType) {
        // In one piece, which the server takes up to 16 MB.
        xcb_change_property(connection,
                            XCB_PROP_MODE_REPLACE,
                            request.requestor,
                            request.property,
                            htmlType,
                            8,
                            static_cast<std::uint32_t>(html.size()),
                            html.data());
        notify.property = request.property;
    }
    std::array<char, 32> wire{};
    std::memcpy(wire.data(), &notify, sizeof notify);
    xcb_send_event(connection, 0, request.requestor, 0, wire.data());
    xcb_flush(connection);
}

} // namespace

int main(int argc, char** argv) {
    const std::size_t lineCount = argc == 2 ? std::strtoul(argv[1], nullptr, 10) : 0;
    const text::ConversionPayload payload = text::makeSheetDocument(
        text::LineList(foundation::TextBuffer(benchmarks::shortLines(lineCount))));

    testing_support::XcbClient client;
    xcb_connection_t* const connection = client.connection();
    const xcb_atom_t clipboard = client.atom("CLIPBOARD");
    const xcb_atom_t htmlType = client.atom("text/html");
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_grab_key(
        connection, 0, root, XCB_MOD_MASK_4, keyCode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_flush(connection);
    while (const auto event = client.event(std::nullopt)) {
        const auto type = event->response_type & 0x7F;
        if (type == XCB_KEY_PRESS) {
            const auto* press = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
            xcb_set_selection_owner(connection, client.window(), clipboard, press->time);
            xcb_flush(connection);
        } else if (type == XCB_SELECTION_REQUEST) {
            const auto* request =
                reinterpret_cast<const xcb_selection_request_event_t*>(event.get());
            answer(connection, *request, htmlType, payload.html.view());
        }
    }
    return 0;
}
