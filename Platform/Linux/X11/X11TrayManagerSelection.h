#pragma once

#include "Platform/Linux/EventLoop.h"
#include "Platform/Linux/TrayManagerSelection.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace platform {

/// The tray manager's selection of the display's default screen, watched on a connection of its
/// own. When the server goes, there is no manager any more.
class X11TrayManagerSelection final : public TrayManagerSelection {
  public:
    /// Connects to `display`, or where DISPLAY points when it is empty. Null when there is no
    /// server, or one that does not tell of changes of selections. Waits for the server. The loop
    /// outlives the watch.
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
