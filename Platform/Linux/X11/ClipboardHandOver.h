#pragma once

#include "Foundation/Logger.h"
#include "Platform/Linux/X11/X11ClipboardAtoms.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventQueue.h"
#include "Platform/Linux/X11/X11SelectionOwner.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <optional>

namespace platform {

/// Leaves what we own in CLIPBOARD to the desktop's clipboard manager, for a program that is about
/// to end: an X11 clipboard ends with its owner. Main thread only.
class ClipboardHandOver {
  public:
    /// `silence` is how long the manager may keep still before it is given up. Everything outlives
    /// the object.
    ClipboardHandOver(const X11Connection& connection,
                      X11EventQueue& events,
                      const X11ClipboardAtoms& atoms,
                      X11SelectionOwner& owner,
                      std::chrono::milliseconds silence,
                      foundation::Logger logger);

    /// Returns when the manager has everything, refuses or keeps still; at once when we own nothing
    /// or there is no manager.
    void run();

  private:
    [[nodiscard]] xcb_window_t manager() const;
    [[nodiscard]] std::optional<xcb_timestamp_t> ask();
    [[nodiscard]] bool isAnswer(const xcb_generic_event_t& event, xcb_timestamp_t askedAt) const;
    [[nodiscard]] static bool
    isFrom(xcb_window_t client, const xcb_generic_event_t& event, std::uint32_t idMask);

    const X11Connection& connection_;
    X11EventQueue& events_;
    const X11ClipboardAtoms& atoms_;
    X11SelectionOwner& owner_;
    const std::chrono::milliseconds silence_;
    foundation::Logger logger_;
};

} // namespace platform
