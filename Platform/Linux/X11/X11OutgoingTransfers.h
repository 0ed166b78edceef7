#pragma once

#include "Foundation/Interface.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Linux/X11/X11ClipboardContext.h"
#include "Platform/MainQueue.h"

#include <xcb/xcb.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace platform {

/// Sends texts to other clients: short ones at once, long ones incrementally (INCR), where the
/// receiver deletes each piece from its property to ask for the next one. A text stays alive for as
/// long as it is being sent, whatever happens to the clipboard. A receiver that makes no progress
/// for the time in the limits is dropped. Main thread only.
class X11OutgoingTransfers : foundation::Pinned {
  public:
    struct Receiver {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;

        bool operator==(const Receiver&) const = default;
    };

    /// Context and queue outlive the object.
    X11OutgoingTransfers(const X11ClipboardContext& context, MainQueue& queue);
    ~X11OutgoingTransfers();

    /// Sends `text` as `type`, or begins to. False if the receiver is gone. Throws std::bad_alloc.
    [[nodiscard]] bool send(const Receiver& receiver,
                            xcb_atom_t type,
                            std::shared_ptr<const foundation::TextBuffer> text);

    /// A property was deleted: sends the next piece if it belongs to a transfer.
    void handleDeletion(const Receiver& receiver);

    /// Ends the transfers to a window that was destroyed.
    void endAllTo(xcb_window_t window);

  private:
    struct Transfer {
        Receiver receiver;
        xcb_atom_t type;
        std::shared_ptr<const foundation::TextBuffer> text;
        std::size_t sentCount = 0;
        bool hasEnded = false;
        bool hasProgressed = true;
    };

    void end(Receiver receiver);
    void watchProgress();
    void dropIdleReceivers();

    const X11ClipboardContext& context_;
    MainQueue& queue_;
    const std::size_t chunkSize_;
    std::vector<Transfer> transfers_;
    std::shared_ptr<WorkItem> check_;
};

} // namespace platform
