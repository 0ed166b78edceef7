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

/// The basics of a small X client: a connection, a window, atom names, and events with a time
/// limit. Independent of the program under test.
class XcbClient : foundation::Pinned {
  public:
    /// Connects to the display, DISPLAY by default. Exits with code 3 if there is no server.
    explicit XcbClient(const char* display = nullptr);
    ~XcbClient();

    [[nodiscard]] xcb_connection_t* connection() const { return connection_; }

    /// Receives events for changes of its properties.
    [[nodiscard]] xcb_window_t window() const { return window_; }

    [[nodiscard]] xcb_window_t makeWindow() const;
    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    [[nodiscard]] std::string name(xcb_atom_t atom);

    /// The server's current time.
    [[nodiscard]] xcb_timestamp_t time();

    /// The next event, which may be an error; null if none arrives within `limit`. Without a limit
    /// it waits for ever. Exits if the connection is lost.
    [[nodiscard]] Reply<xcb_generic_event_t> event(std::optional<std::chrono::milliseconds> limit);

  private:
    xcb_connection_t* connection_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    std::map<std::string, xcb_atom_t> atoms_;
    std::deque<Reply<xcb_generic_event_t>> deferred_;
};

} // namespace testing_support
