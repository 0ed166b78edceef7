#pragma once

#include "Foundation/Interface.h"
#include "Platform/Linux/X11/X11Connection.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace platform {

/// Keys that are pressed while another client has the keyboard, as the input extension reports them
/// to everyone. Some desktops take the keyboard as soon as Super is pressed, and with it every key
/// that follows, whatever other clients have grabbed.
///
/// Nothing arrives unless requested. Without the extension nothing arrives at all. Main thread
/// only.
class X11RawKeys : foundation::Pinned {
  public:
    struct Event {
        bool isPress = false; ///< Or a release. Keys do not repeat.
        xcb_keycode_t keyCode = 0;
    };

    /// Waits for the server. The connection outlives the object.
    explicit X11RawKeys(const X11Connection& connection);

    /// Requests the events of all keys if another client has the keyboard now. Waits for the
    /// server. No effect if they are requested already.
    void start();

    /// Events that are under way still arrive.
    void stop();

    [[nodiscard]] bool isStarted() const { return isStarted_; }

    /// nullopt for all other events.
    [[nodiscard]] std::optional<Event> event(const xcb_generic_event_t& event) const;

  private:
    [[nodiscard]] bool hasAnotherClientTheKeyboard() const;
    void select(std::uint32_t events) const;

    const X11Connection& connection_;
    std::optional<std::uint8_t> extension_;
    xcb_window_t window_; ///< Never shown.
    bool isStarted_ = false;
};

} // namespace platform
