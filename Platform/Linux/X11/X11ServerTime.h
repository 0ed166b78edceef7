#pragma once

#include "Platform/Linux/X11/X11ClipboardAtoms.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventQueue.h"

#include <xcb/xcb.h>

#include <optional>

namespace platform {

/// The server's present time, as selections want it: with the constant CurrentTime two programs
/// that take or ask for a selection in the same moment cannot be told apart. `window` is one of our
/// own that listens to changes of its properties. None when the server has not told by `deadline`.
[[nodiscard]] std::optional<xcb_timestamp_t> serverTime(const X11Connection& connection,
                                                        X11EventQueue& events,
                                                        const X11ClipboardAtoms& atoms,
                                                        xcb_window_t window,
                                                        X11EventQueue::Clock::time_point deadline);

} // namespace platform
