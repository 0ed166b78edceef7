#pragma once

#include "Foundation/Interface.h"
#include "Foundation/Logger.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Linux/X11/X11ClipboardAtoms.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventQueue.h"
#include "Platform/Linux/X11/X11OutgoingTransfer.h"
#include "Platform/Linux/X11/X11PasteboardLimits.h"
#include "Platform/MainQueue.h"
#include "Platform/Pasteboard.h"

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace platform {

/// Owns CLIPBOARD for this program and gives what is in it to whoever asks.
///
/// Texts are offered under every name that other programs know them by. STRING is ISO 8859-1, with
/// '?' for what that does not have; text/plain and TEXT are UTF-8, as everywhere today.
///
/// Nothing is given away but inside handle(), so that others see whatever happened between two
/// calls of it as one change. Main thread only.
class X11SelectionOwner : foundation::Pinned {
  public:
    /// Everything outlives the owner.
    X11SelectionOwner(const X11Connection& connection,
                      X11EventQueue& events,
                      const X11ClipboardAtoms& atoms,
                      MainQueue& queue,
                      const X11PasteboardLimits& limits,
                      foundation::Logger logger);
    ~X11SelectionOwner();

    /// The window that owns CLIPBOARD when this program does.
    [[nodiscard]] xcb_window_t window() const { return window_; }

    /// Becomes the owner, of nothing at first. False when the server does not agree; when it does
    /// not answer in time, what we own and hold stays as it was.
    [[nodiscard]] bool acquire();

    /// Whether the server takes us for the owner of what acquire() began. Waits for the server.
    [[nodiscard]] bool owns() const;

    /// Adds a text to what we own, in the place of one of the same type.
    void hold(PasteboardType type, std::shared_ptr<const foundation::TextBuffer> text);

    /// The text of that type that we hold; null when there is none.
    [[nodiscard]] std::shared_ptr<const foundation::TextBuffer> held(PasteboardType type) const;

    /// The names of all forms in which the texts that we hold can be had.
    [[nodiscard]] std::vector<xcb_atom_t> offeredTexts() const;

    /// Serves requests, goes on with transfers and forgets what was lost to another owner; ignores
    /// every other event. A request for which there is not enough memory is refused.
    void handle(const xcb_generic_event_t& event);

  private:
    [[nodiscard]] bool giveWhatIsAsked(const xcb_selection_request_event_t& request,
                                       xcb_atom_t property);
    void serve(const xcb_selection_request_event_t& request);
    [[nodiscard]] bool isForUs(const xcb_selection_request_event_t& request) const;
    [[nodiscard]] bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    [[nodiscard]] bool convertMultiple(xcb_window_t requestor, xcb_atom_t property);
    [[nodiscard]] bool give(const X11OutgoingTransfer::Receiver& receiver,
                            std::shared_ptr<const foundation::TextBuffer> text);
    void setProperty(xcb_window_t requestor,
                     xcb_atom_t property,
                     xcb_atom_t type,
                     const std::vector<std::uint32_t>& values);
    void continueTransfer(const xcb_property_notify_event_t& event);
    void endTransfer(xcb_window_t window, xcb_atom_t property);
    void endTransfersTo(xcb_window_t window);

    const X11Connection& connection_;
    X11EventQueue& events_;
    const X11ClipboardAtoms& atoms_;
    MainQueue& queue_;
    const X11PasteboardLimits& limits_;
    foundation::Logger logger_;
    const std::size_t chunkSize_;
    const xcb_window_t window_;
    bool isOwner_ = false;
    xcb_timestamp_t ownedSince_ = XCB_CURRENT_TIME;
    /// The request that made us the owner: an event that the server sent before it is told by that.
    std::uint32_t acquisition_ = 0;
    std::map<PasteboardType, std::shared_ptr<const foundation::TextBuffer>> texts_;
    std::vector<std::unique_ptr<X11OutgoingTransfer>> transfers_;
};

} // namespace platform
