#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// Frees what XCB hands out: replies, errors and events.
struct XcbFree {
    void operator()(void* memory) const { std::free(memory); } // NOLINT(*-no-malloc)
};

template <typename Type>
using XcbPointer = std::unique_ptr<Type, XcbFree>;

/// A connection of one's own to the X server, closed with the object. Each backend has its own, so
/// that one that waits for its replies never takes events away from another. Main thread only.
class X11Connection {
  public:
    /// Connects to `display` (":0"), or where DISPLAY points when it is empty. None when there is
    /// no server or it refuses.
    [[nodiscard]] static std::unique_ptr<X11Connection> open(const std::string& display = {});

    [[nodiscard]] xcb_connection_t* get() const { return connection_.get(); }

    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }

    /// For an event loop to watch: readable when the server has sent something.
    [[nodiscard]] int fileDescriptor() const { return xcb_get_file_descriptor(get()); }

    /// False once the server is gone.
    [[nodiscard]] bool isAlive() const { return xcb_connection_has_error(get()) == 0; }

    /// The atom of that name, made when the server does not know it. XCB_ATOM_NONE when the server
    /// is gone. Waits for the server.
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const;

  private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    X11Connection(xcb_connection_t* connection, const xcb_screen_t* screen)
        : connection_(connection), screen_(screen) {}

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    const xcb_screen_t* screen_;
};

} // namespace platform
