#pragma once

#include "Foundation/Interface.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace testing_support {

struct Freed {
    void operator()(void* memory) const { std::free(memory); } // NOLINT(*-no-malloc)
};

template <typename Type>
using Reply = std::unique_ptr<Type, Freed>;

/// What a small X program needs: a connection, a window, names of atoms and events with a limit of
/// time. It knows nothing of the program under test.
class XcbClient : foundation::Pinned {
  public:
    /// Connects to that display, or where DISPLAY points. Ends the program with exit code 3 when
    /// there is no server.
    explicit XcbClient(const char* display = nullptr);
    ~XcbClient();

    [[nodiscard]] xcb_connection_t* connection() const { return connection_; }

    /// Hears of changes of its properties.
    [[nodiscard]] xcb_window_t window() const { return window_; }

    [[nodiscard]] xcb_window_t makeWindow() const;
    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    [[nodiscard]] std::string name(xcb_atom_t atom);

    /// The server's present time.
    [[nodiscard]] xcb_timestamp_t time();

    /// The next event, which may be an error; null when none has come within `limit`. Without a
    /// limit it waits for ever. Ends the program when the server is gone.
    [[nodiscard]] Reply<xcb_generic_event_t> event(std::optional<std::chrono::milliseconds> limit);

  private:
    xcb_connection_t* connection_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    std::map<std::string, xcb_atom_t> atoms_;
    std::deque<Reply<xcb_generic_event_t>> putOff_;
};

} // namespace testing_support
