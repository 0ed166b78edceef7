#pragma once

#include "Foundation/Interface.h"
#include "Platform/Geometry.h"
#include "Platform/ViewController.h"

#include <string>

namespace platform {

/// What a window's frame offers.
struct WindowStyle {
    bool isTitled = false;
    bool isClosable = false;
    bool isMiniaturizable = false;
    bool isResizable = false;
    bool operator==(const WindowStyle&) const = default;
};

/// How and when a window gets the memory that it is drawn into.
struct WindowBacking {
    bool isBuffered = true;
    bool isDeferred = true;
    bool operator==(const WindowBacking&) const = default;
};

/// A window of the program. It is hidden at first, and closing it only hides it: neither ends the
/// window or the program. Main thread only.
class Window : public foundation::Interface {
  public:
    virtual void setTitle(std::string title) = 0; ///< UTF-8.

    /// Moves the window to the middle of the screen.
    virtual void center() = 0;

    /// Fills the window with the controller's view, which is made now; the size of the window's
    /// content stays. The controller is not owned and outlives the window; it is told when the view
    /// appears, is laid out and disappears.
    virtual void setContentViewController(ViewController& controller) = 0;

    /// Shows the window and gives it the keyboard; nothing new when it is shown already.
    virtual void makeKeyAndOrderFront() = 0;

    virtual void close() = 0;

    [[nodiscard]] virtual bool isVisible() const = 0;
};

} // namespace platform
