#pragma once

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Frees replies, errors and events, which XCB allocates with malloc.
struct XcbFree {
    void operator()(void* memory) const { std::free(memory); } // NOLINT(*-no-malloc)
};

template <typename Type>
using XcbPointer = std::unique_ptr<Type, XcbFree>;

/// An own connection to the X server, closed with the object. Each backend has its own, so that
/// waiting for a reply never takes events away from another. Functions that return a value wait for
/// the server. Main thread only.
class X11Connection {
  public:
    /// Connects to `display` (":0"), or to DISPLAY if it is empty. Null if there is no server or it
    /// refuses.
    [[nodiscard]] static std::unique_ptr<X11Connection> open(const std::string& display = {});

    [[nodiscard]] xcb_connection_t* get() const { return connection_.get(); }

    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }

    /// For an event loop to watch: readable when the server has sent something.
    [[nodiscard]] int fileDescriptor() const { return xcb_get_file_descriptor(get()); }

    /// False once the server is gone.
    [[nodiscard]] bool isAlive() const { return xcb_connection_has_error(get()) == 0; }

    /// The atom of that name, created if necessary. XCB_ATOM_NONE if the server is gone.
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const { return atoms({name}).front(); }

    /// The atoms of all names, in one round trip.
    [[nodiscard]] std::vector<xcb_atom_t> atoms(const std::vector<std::string_view>& names) const;

    /// XCB_WINDOW_NONE if the selection has no owner or the server is gone.
    [[nodiscard]] xcb_window_t ownerOf(xcb_atom_t selection) const;

    /// Creates an invisible window that selects changes of its properties. Does not wait.
    [[nodiscard]] xcb_window_t createWindow() const;

    /// Reads up to `count` units of 4 bytes of a property from unit `first` on; null if the window
    /// or the server is gone. If `deletes` is set, the server deletes the property with its end.
    [[nodiscard]] XcbPointer<xcb_get_property_reply_t> property(xcb_window_t window,
                                                                xcb_atom_t property,
                                                                std::uint32_t first,
                                                                std::uint32_t count,
                                                                bool deletes) const;

    /// Replaces a property. The size of an item determines its format: 8 or 32 bits.
    template <typename Item>
    void setProperty(xcb_window_t window,
                     xcb_atom_t property,
                     xcb_atom_t type,
                     const Item* items,
                     std::size_t count) const {
        xcb_change_property(get(),
                            XCB_PROP_MODE_REPLACE,
                            window,
                            property,
                            type,
                            static_cast<std::uint8_t>(8 * sizeof(Item)),
                            static_cast<std::uint32_t>(count),
                            items);
    }

    /// Selects the events that the server sends us about any client's window.
    void selectEvents(xcb_window_t window, std::uint32_t events) const {
        xcb_change_window_attributes(get(), window, XCB_CW_EVENT_MASK, &events);
    }

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
