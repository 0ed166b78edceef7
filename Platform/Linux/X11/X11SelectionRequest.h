#pragma once

#include "Foundation/Interface.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Linux/X11/X11ClipboardContext.h"

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace platform {

/// Conversion requests to the current owner of CLIPBOARD, one after another, under one time limit:
/// the owner is given up once it has sent nothing for the time in the limits, or if it changes or
/// exits meanwhile.
///
/// Answers arrive in a window of the request's own, so that a late answer to an earlier request is
/// never mistaken for one to this. Main thread only.
class X11SelectionRequest : foundation::Pinned {
  public:
    enum class Outcome : std::uint8_t {
        received,
        refused,
        silent,       ///< Nothing arrived within the limit, or the server is gone.
        ownerChanged, ///< Another client took the clipboard, or the owner exited.
        malformed     ///< The answer is inconsistent, and the rest of it may still arrive.
    };

    struct Answer {
        Outcome outcome = Outcome::refused;
        xcb_atom_t type = XCB_ATOM_NONE;
        /// Bits per item: 8, 16 or 32.
        std::uint8_t format = 0;
        /// In the machine's byte order.
        foundation::TextBuffer bytes;
    };

    /// The context outlives the request.
    explicit X11SelectionRequest(X11ClipboardContext& context);

    /// Deselects all events. The caller destroys the window.
    ~X11SelectionRequest();

    [[nodiscard]] xcb_window_t window() const { return window_; }

    /// Requests CLIPBOARD as `target`. Throws std::bad_alloc if the answer exceeds the size limit
    /// or memory.
    [[nodiscard]] Answer convert(xcb_atom_t target);

  private:
    [[nodiscard]] Outcome waitFor(X11EventQueue::Event& event,
                                  const X11EventQueue::Predicate& isAwaited);
    [[nodiscard]] Answer receiveIncrementally(std::size_t sizeHint);
    [[nodiscard]] Outcome takeProperty(Answer& answer);
    [[nodiscard]] bool isOwnerChange(const xcb_generic_event_t& event) const;
    void noteProgress();

    X11ClipboardContext& context_;
    const xcb_window_t window_;
    X11EventQueue::Clock::time_point deadline_;
    std::optional<xcb_timestamp_t> time_;
};

} // namespace platform
