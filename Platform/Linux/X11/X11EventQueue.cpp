#include "Platform/Linux/X11/X11EventQueue.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace platform {

X11EventQueue::Event X11EventQueue::next() {
    if (putOff_.empty()) {
        return Event(xcb_poll_for_event(connection_.get()));
    }
    Event event = std::move(putOff_.front());
    putOff_.pop_front();
    return event;
}

X11EventQueue::Event
X11EventQueue::waitFor(const std::function<bool(const xcb_generic_event_t&)>& isAwaited,
                       Clock::time_point deadline) {
    const auto awaited = std::find_if(
        putOff_.begin(), putOff_.end(), [&](const Event& event) { return isAwaited(*event); });
    if (awaited != putOff_.end()) {
        Event event = std::move(*awaited);
        putOff_.erase(awaited);
        return event;
    }
    xcb_flush(connection_.get());
    while (true) {
        // XCB's own queue comes first: what it holds does not make the descriptor readable.
        if (Event event{xcb_poll_for_event(connection_.get())}) {
            if (isAwaited(*event)) {
                return event;
            }
            putOff_.push_back(std::move(event));
            // Others may go on sending for ever.
            if (Clock::now() >= deadline) {
                return nullptr;
            }
        } else if (!connection_.isAlive() || !sleepUntilReadable(deadline)) {
            return nullptr;
        }
    }
}

bool X11EventQueue::hasEvents() {
    while (Event event{xcb_poll_for_queued_event(connection_.get())}) {
        putOff_.push_back(std::move(event));
    }
    return !putOff_.empty();
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
