#pragma once

#include "Foundation/TextBuffer.h"
#include "Platform/Linux/X11/X11ClipboardAtoms.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventQueue.h"
#include "Platform/Linux/X11/X11PasteboardLimits.h"

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace platform {

/// Questions to the program that owns CLIPBOARD, one after another, within one limit of time: the
/// owner is given up when it has not sent any data for the time that the limits name. An owner
/// that changes or ends meanwhile is given up as well.
///
/// The answers arrive in a window that belongs to this request alone, so that the late answer to
/// an earlier one is never taken for this one's. Main thread only.
class X11SelectionRequest {
  public:
    enum class Outcome : std::uint8_t {
        received,
        refused,
        silent,       ///< Nothing came within the limit, or the server is gone.
        ownerChanged, ///< Another program took the clipboard, or the owner ended.
        malformed     ///< What came is no whole answer, and the rest of it may still come.
    };

    struct Answer {
        Outcome outcome = Outcome::refused;
        xcb_atom_t type = XCB_ATOM_NONE;
        /// Bits per item: 8, 16 or 32.
        std::uint8_t format = 0;
        /// What was received, in the order of the machine's bytes.
        foundation::TextBuffer bytes;
    };

    /// Uses `window`, which listens to changes of its properties and to `firstXfixesEvent`, the
    /// change of CLIPBOARD's owner, and which nobody has used before. Everything outlives the
    /// request.
    X11SelectionRequest(const X11Connection& connection,
                        X11EventQueue& events,
                        const X11ClipboardAtoms& atoms,
                        const X11PasteboardLimits& limits,
                        xcb_window_t window,
                        int firstXfixesEvent);

    /// Asks for CLIPBOARD as `target`. Throws std::bad_alloc when the answer is longer than the
    /// limits allow or does not fit in memory.
    [[nodiscard]] Answer convert(xcb_atom_t target);

  private:
    [[nodiscard]] Answer receiveInPieces(std::size_t sizeHint);
    [[nodiscard]] Outcome takeProperty(Answer& answer);
    [[nodiscard]] bool isOwnerChange(const xcb_generic_event_t& event) const;
    void noteProgress();

    const X11Connection& connection_;
    X11EventQueue& events_;
    const X11ClipboardAtoms& atoms_;
    const X11PasteboardLimits& limits_;
    const xcb_window_t window_;
    const int firstXfixesEvent_;
    X11EventQueue::Clock::time_point deadline_;
    std::optional<xcb_timestamp_t> time_;
};

} // namespace platform
