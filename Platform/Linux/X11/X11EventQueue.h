#pragma once

#include "Foundation/Interface.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <xcb/xcb.h>

#include <chrono>
#include <deque>
#include <functional>

namespace platform {

/// The events of one connection, for code that at times has to wait for a certain one: whatever
/// arrives meanwhile is put off and comes out of next() afterwards, in the order of arrival.
///
/// Events that were read while somebody waited no longer make the connection's descriptor readable:
/// who waits asks hasEvents() afterwards and sees to it that they are handled. Main thread only.
class X11EventQueue : foundation::Pinned {
  public:
    using Event = XcbPointer<xcb_generic_event_t>;
    using Clock = std::chrono::steady_clock;

    /// The connection outlives the queue.
    explicit X11EventQueue(const X11Connection& connection) : connection_(connection) {}

    /// The oldest event that is there, without waiting; null when there is none.
    [[nodiscard]] Event next();

    /// Sends what is to be sent and waits for an event that `isAwaited` picks. Null when nothing of
    /// the kind has come by `deadline`, or the server is gone.
    [[nodiscard]] Event waitFor(const std::function<bool(const xcb_generic_event_t&)>& isAwaited,
                                Clock::time_point deadline);

    /// Whether next() has something to give that was read from the server already.
    [[nodiscard]] bool hasEvents();

  private:
    [[nodiscard]] bool sleepUntilReadable(Clock::time_point deadline) const;

    const X11Connection& connection_;
    std::deque<Event> putOff_;
};

/// What kind of event this is, whether the server or another program made it; 0 is an X error.
[[nodiscard]] inline int eventType(const xcb_generic_event_t& event) {
    constexpr int sentByProgram = 0x80;
    return event.response_type & ~sentByProgram;
}

/// The event as the structure of its kind, which eventType() told.
template <typename Type>
[[nodiscard]] const Type& eventAs(const xcb_generic_event_t& event) {
    static_assert(sizeof(Type) <= sizeof(xcb_generic_event_t));
    // XCB's own way: every event structure lies over the generic one.
    return *reinterpret_cast<const Type*>(&event);
}

} // namespace platform
