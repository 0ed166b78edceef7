#pragma once

#include "Platform/Linux/X11/X11ClipboardContext.h"
#include "Platform/Linux/X11/X11SelectionOwner.h"

namespace platform {

/// Hands the contents of CLIPBOARD that we own to the desktop's clipboard manager, before the
/// program exits: an X11 clipboard ends with its owner. Returns when the manager has saved them,
/// refuses, or makes no progress for the time in the limits; at once if we own nothing or there is
/// no manager. Main thread only. Throws std::bad_alloc.
void handOverClipboard(X11ClipboardContext& context, X11SelectionOwner& owner);

} // namespace platform
