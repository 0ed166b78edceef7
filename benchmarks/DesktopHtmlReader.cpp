#include "benchmarks/DesktopHtmlReader.h"

#include "benchmarks/Timing.h"

#include <xcb/xfixes.h>

#include <cstddef>
#include <limits>
#include <stdexcept>
#include <utility>

namespace benchmarks {

using testing_support::Reply;

DesktopHtmlReader::DesktopHtmlReader(const std::string& display)
    : client_(display.c_str()),
      clipboard_(client_.atom("CLIPBOARD")),
      htmlType_(client_.atom("text/html")),
      incremental_(client_.atom("INCR")),
      place_(client_.atom("PASTE")) {
    xcb_connection_t* const connection = client_.connection();
    const Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, 1, 0), nullptr));
    const auto* const extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!version || extension == nullptr) {
        throw std::runtime_error("the X server does not report clipboard owner changes");
    }
    ownerEvent_ = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    xcb_xfixes_select_selection_input(connection,
                                      client_.window(),
                                      clipboard_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    xcb_flush(connection);
}

void DesktopHtmlReader::forgetOwners() {
    while (client_.event(std::chrono::milliseconds(0))) {
    }
}

std::optional<DesktopHtmlReader::Received>
DesktopHtmlReader::awaitHtml(std::chrono::milliseconds limit) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + limit;
    Received received;
    bool isInPieces = false;
    while (const auto event = client_.event(
               std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()))) {
        const auto type = event->response_type & 0x7F;
        if (type == ownerEvent_) {
            const auto* owner =
                reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event.get());
            if (owner->owner != XCB_NONE) {
                received = {.ownerAt = now()};
                isInPieces = false;
                ask(owner->selection_timestamp);
            }
        } else if (type == XCB_SELECTION_NOTIFY) {
            const auto* answer = reinterpret_cast<const xcb_selection_notify_event_t*>(event.get());
            if (answer->property == XCB_NONE) {
                continue;
            }
            Property whole = take();
            isInPieces = whole.type == incremental_;
            if (!isInPieces) {
                received.completeAt = now();
                received.html = std::move(whole.bytes);
                return received;
            }
        } else if (type == XCB_PROPERTY_NOTIFY && isInPieces) {
            const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            if (change->atom != place_ || change->state != XCB_PROPERTY_NEW_VALUE) {
                continue;
            }
            const Property piece = take();
            if (piece.type != XCB_ATOM_NONE && piece.bytes.empty()) {
                return received;
            }
            received.html += piece.bytes;
            received.completeAt = now();
        }
    }
    return std::nullopt;
}

void DesktopHtmlReader::ask(xcb_timestamp_t time) {
    xcb_convert_selection(
        client_.connection(), client_.window(), clipboard_, htmlType_, place_, time);
    xcb_flush(client_.connection());
}

DesktopHtmlReader::Property DesktopHtmlReader::take() {
    constexpr auto everything = std::numeric_limits<std::uint32_t>::max() / 4;
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(client_.connection(),
                               xcb_get_property(client_.connection(),
                                                1,
                                                client_.window(),
                                                place_,
                                                XCB_GET_PROPERTY_TYPE_ANY,
                                                0,
                                                everything),
                               nullptr));
    if (!reply) {
        throw std::runtime_error("cannot read the pasted text from the X server");
    }
    return {.type = reply->type,
            .bytes = {static_cast<const char*>(xcb_get_property_value(reply.get())),
                      static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))}};
}

} // namespace benchmarks
