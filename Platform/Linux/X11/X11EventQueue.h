#pragma once

#include "Foundation/Interface.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <xcb/xcb.h>

#include <chrono>
#include <deque>
#include <functional>
#include <optional>

namespace platform {

/// The events of one connection, for code that sometimes has to wait for a particular one: other
/// events that arrive meanwhile are deferred, and next() returns them later in order of arrival.
///
/// Deferred events do not make the connection's descriptor readable: after a wait, check
/// hasEvents() and see that they are handled. Main thread only.
class X11EventQueue : foundation::Pinned {
  public:
    using Event = XcbPointer<xcb_generic_event_t>;
    using Clock = std::chrono::steady_clock;
    using Predicate = std::function<bool(const xcb_generic_event_t&)>;

    /// The connection outlives the queue.
    explicit X11EventQueue(const X11Connection& connection) : connection_(connection) {}

    /// The oldest event, without waiting; null if there is none.
    [[nodiscard]] Event next();

    /// Flushes requests and waits for an event that satisfies `isAwaited`. Null if none has arrived
    /// by `deadline`, or the server is gone.
    [[nodiscard]] Event waitFor(const Predicate& isAwaited, Clock::time_point deadline);

    /// The server's current time, which selections need instead of the constant CurrentTime to
    /// order the requests of different clients. `window` is one of our own that selects property
    /// changes. nullopt if the server has not answered by `deadline`.
    [[nodiscard]] std::optional<xcb_timestamp_t> serverTime(xcb_window_t window,
                                                            Clock::time_point deadline);

    /// Whether an event that satisfies `isMeant` has arrived; it stays in the queue. Does not wait,
    /// and stops reading at `deadline` if events keep coming.
    [[nodiscard]] bool hasReceived(const Predicate& isMeant, Clock::time_point deadline);

    /// Whether next() has an event that was already read from the descriptor.
    [[nodiscard]] bool hasEvents();

  private:
    [[nodiscard]] bool sleepUntilReadable(Clock::time_point deadline) const;

    const X11Connection& connection_;
    std::deque<Event> deferred_;
};

/// The event's type, whether it is from the server or sent by another client; 0 is an X error.
[[nodiscard]] inline int eventType(const xcb_generic_event_t& event) {
    constexpr int sentByClient = 0x80;
    return event.response_type & ~sentByClient;
}

/// The event as the structure that eventType() indicates.
template <typename Type>
[[nodiscard]] const Type& eventAs(const xcb_generic_event_t& event) {
    static_assert(sizeof(Type) <= sizeof(xcb_generic_event_t));
    // As XCB intends: every event structure overlays the generic one.
    return *reinterpret_cast<const Type*>(&event);
}

} // namespace platform
