#pragma once

#include "Platform/Linux/LinuxInterfaces.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace platform {

/// The tray manager's selection of the default screen, watched over a connection of its own. A lost
/// server counts as no owner.
class X11TrayManagerSelection final : public TrayManagerSelection {
  public:
    /// Connects to `display`, or to DISPLAY if it is empty. Null if there is no server, or one
    /// without XFixes. Waits for the server. The loop outlives the result.
    [[nodiscard]] static std::unique_ptr<X11TrayManagerSelection>
    open(EventLoop& eventLoop, std::function<void()> didChange, const std::string& display = {});

    [[nodiscard]] bool hasOwner() const override { return owner_ != XCB_WINDOW_NONE; }

  private:
    X11TrayManagerSelection(std::unique_ptr<X11Connection> connection,
                            std::function<void()> didChange,
                            std::uint8_t changeEvent);

    void readEvents();
    void drain();

    std::unique_ptr<X11Connection> connection_;
    std::function<void()> didChange_;
    std::uint8_t changeEvent_;
    xcb_window_t owner_ = XCB_WINDOW_NONE;
    std::unique_ptr<FileDescriptorWatch> watch_;
};

} // namespace platform
