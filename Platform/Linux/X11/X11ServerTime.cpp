#include "Platform/Linux/X11/X11ServerTime.h"

namespace platform {

std::optional<xcb_timestamp_t> serverTime(const X11Connection& connection,
                                          X11EventQueue& events,
                                          const X11ClipboardAtoms& atoms,
                                          xcb_window_t window,
                                          X11EventQueue::Clock::time_point deadline) {
    constexpr int bitsPerUnit = 8;
    // Appending nothing changes nothing, but the server tells of it, with the time.
    const auto request = xcb_change_property(connection.get(),
                                             XCB_PROP_MODE_APPEND,
                                             window,
                                             atoms.timestamp,
                                             XCB_ATOM_STRING,
                                             bitsPerUnit,
                                             0,
                                             nullptr);
    const auto event = events.waitFor(
        [&](const xcb_generic_event_t& candidate) {
            // The late answer to an earlier question tells a time that is over.
            if (eventType(candidate) != XCB_PROPERTY_NOTIFY ||
                candidate.full_sequence != request.sequence) {
                return false;
            }
            const auto& notify = eventAs<xcb_property_notify_event_t>(candidate);
            return notify.window == window && notify.atom == atoms.timestamp;
        },
        deadline);
    if (!event) {
        return std::nullopt;
    }
    return eventAs<xcb_property_notify_event_t>(*event).time;
}

} // namespace platform
