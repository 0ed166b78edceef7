#pragma once

#include "Foundation/Interface.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Linux/X11/X11ClipboardContext.h"
#include "Platform/Linux/X11/X11OutgoingTransfers.h"
#include "Platform/MainQueue.h"
#include "Platform/Pasteboard.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

/// Owns CLIPBOARD for this program and serves its contents to requestors.
///
/// Requests are served in handle() only, so other clients see everything that happens between two
/// calls of it as a single change. Main thread only.
class X11SelectionOwner : foundation::Pinned {
  public:
    /// Context and queue outlive the owner.
    X11SelectionOwner(X11ClipboardContext& context, MainQueue& queue);
    ~X11SelectionOwner();

    /// The window that owns CLIPBOARD when this program does.
    [[nodiscard]] xcb_window_t window() const { return window_; }

    /// Takes ownership, without contents at first, in two round trips. False if the server refuses;
    /// if it does not answer in time, ownership and contents are unchanged.
    [[nodiscard]] bool acquire();

    /// Whether ownership has not been lost since acquire(), by what the server has sent so far.
    /// Does not wait.
    [[nodiscard]] bool owns();

    /// Adds a text to the contents; replaces one of the same type.
    void hold(PasteboardType type, std::shared_ptr<const foundation::TextBuffer> text);

    /// The text of that type in the contents, or null.
    [[nodiscard]] std::shared_ptr<const foundation::TextBuffer> held(PasteboardType type) const;

    /// The targets of the texts in the contents.
    [[nodiscard]] std::vector<xcb_atom_t> offeredTexts() const;

    /// Serves requests, continues transfers and drops the contents when ownership is lost. Ignores
    /// all other events. A request is refused if memory runs out.
    void handle(const xcb_generic_event_t& event);

    /// Leaves the contents to the desktop's clipboard manager, before the program exits: an X11
    /// clipboard ends with its owner. Returns when the manager has saved them, refuses, or makes no
    /// progress for the time in the limits; at once if we own nothing or there is no manager.
    /// Throws std::bad_alloc.
    void handOver();

  private:
    [[nodiscard]] std::optional<xcb_timestamp_t> requestSaving();
    [[nodiscard]] bool isLoss(const xcb_generic_event_t& event) const;
    void serve(const xcb_selection_request_event_t& request);
    [[nodiscard]] bool isForUs(const xcb_selection_request_event_t& request) const;
    [[nodiscard]] bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    [[nodiscard]] bool convertMultiple(xcb_window_t requestor, xcb_atom_t property);

    X11ClipboardContext& context_;
    X11OutgoingTransfers transfers_;
    const xcb_window_t window_;
    bool isOwner_ = false;
    xcb_timestamp_t ownedSince_ = XCB_CURRENT_TIME;
    /// The sequence number of the request that made us the owner; earlier events predate it.
    std::uint32_t acquisition_ = 0;
    std::map<PasteboardType, std::shared_ptr<const foundation::TextBuffer>> texts_;
};

} // namespace platform
