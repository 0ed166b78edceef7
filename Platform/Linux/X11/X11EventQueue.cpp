#include "Platform/Linux/X11/X11EventQueue.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace platform {

X11EventQueue::Event X11EventQueue::next() {
    if (deferred_.empty()) {
        return Event(xcb_poll_for_event(connection_.get()));
    }
    Event event = std::move(deferred_.front());
    deferred_.pop_front();
    return event;
}

X11EventQueue::Event X11EventQueue::waitFor(const Predicate& isAwaited,
                                            Clock::time_point deadline) {
    const auto awaited = std::find_if(
        deferred_.begin(), deferred_.end(), [&](const Event& event) { return isAwaited(*event); });
    if (awaited != deferred_.end()) {
        Event event = std::move(*awaited);
        deferred_.erase(awaited);
        return event;
    }
    xcb_flush(connection_.get());
    while (true) {
        // XCB's own queue comes first: its events do not make the descriptor readable.
        if (Event event{xcb_poll_for_event(connection_.get())}) {
            if (isAwaited(*event)) {
                return event;
            }
            deferred_.push_back(std::move(event));
            // Other clients may send events without end.
            if (Clock::now() >= deadline) {
                return nullptr;
            }
        } else if (!connection_.isAlive() || !sleepUntilReadable(deadline)) {
            return nullptr;
        }
    }
}

std::optional<xcb_timestamp_t> X11EventQueue::serverTime(xcb_window_t window,
                                                         Clock::time_point deadline) {
    // Appending nothing leaves the property unchanged, but causes an event with the time.
    const auto request = xcb_change_property(connection_.get(),
                                             XCB_PROP_MODE_APPEND,
                                             window,
                                             XCB_ATOM_WM_NAME,
                                             XCB_ATOM_STRING,
                                             8,
                                             0,
                                             nullptr);
    const Event event = waitFor(
        [&](const xcb_generic_event_t& candidate) {
            // A late answer to an earlier request carries an outdated time.
            return eventType(candidate) == XCB_PROPERTY_NOTIFY &&
                   candidate.full_sequence == request.sequence &&
                   eventAs<xcb_property_notify_event_t>(candidate).window == window &&
                   eventAs<xcb_property_notify_event_t>(candidate).atom == XCB_ATOM_WM_NAME;
        },
        deadline);
    return event ? std::optional(eventAs<xcb_property_notify_event_t>(*event).time) : std::nullopt;
}

bool X11EventQueue::hasReceived(const Predicate& isMeant, Clock::time_point deadline) {
    while (Event event{xcb_poll_for_event(connection_.get())}) {
        deferred_.push_back(std::move(event));
        if (Clock::now() >= deadline) {
            break;
        }
    }
    return std::any_of(
        deferred_.begin(), deferred_.end(), [&](const Event& event) { return isMeant(*event); });
}

bool X11EventQueue::hasEvents() {
    while (Event event{xcb_poll_for_queued_event(connection_.get())}) {
        deferred_.push_back(std::move(event));
    }
    return !deferred_.empty();
}

bool X11EventQueue::sleepUntilReadable(Clock::time_point deadline) const {
    pollfd descriptor{.fd = connection_.fileDescriptor(), .events = POLLIN, .revents = 0};
    while (true) {
        const auto remaining =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        const int count =
            poll(&descriptor, 1, static_cast<int>(std::max<long>(remaining.count(), 0)));
        if (count >= 0 || errno != EINTR) {
            return count > 0;
        }
    }
}

} // namespace platform
