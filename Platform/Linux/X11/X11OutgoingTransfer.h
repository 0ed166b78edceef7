#pragma once

#include "Foundation/Interface.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Linux/X11/X11ClipboardAtoms.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/MainQueue.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

namespace platform {

/// A long text on its way to one other program, piece by piece: the receiver deletes each piece
/// when it has read it, and only then the next one goes. The text stays alive for as long as the
/// transfer does, whatever becomes of the clipboard. Main thread only.
class X11OutgoingTransfer : foundation::Pinned {
  public:
    struct Receiver {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;
        xcb_atom_t type = XCB_ATOM_NONE;
    };

    struct Limits {
        std::size_t chunkSize = 0;
        std::chrono::milliseconds silence{0};
    };

    /// Announces the text in the receiver's property. `givenUp` runs from the queue once the
    /// receiver has kept still for longer than the limit, or there is no memory for watching it; it
    /// may destroy the transfer. Connection, atoms and queue outlive it. Throws std::bad_alloc.
    X11OutgoingTransfer(const X11Connection& connection,
                        const X11ClipboardAtoms& atoms,
                        MainQueue& queue,
                        Receiver receiver,
                        std::shared_ptr<const foundation::TextBuffer> text,
                        Limits limits,
                        std::function<void()> givenUp);
    ~X11OutgoingTransfer();

    [[nodiscard]] const Receiver& receiver() const { return receiver_; }

    /// The receiver has taken what was there: sends the next piece, or the empty one that ends the
    /// text. False when that one has been taken as well.
    [[nodiscard]] bool sendNext();

  private:
    void watchProgress();

    const X11Connection& connection_;
    MainQueue& queue_;
    const Receiver receiver_;
    const std::shared_ptr<const foundation::TextBuffer> text_;
    const Limits limits_;
    const std::function<void()> givenUp_;
    std::shared_ptr<WorkItem> check_;
    std::size_t sentCount_ = 0;
    bool hasEnded_ = false;
    bool hasProgressed_ = false;
};

} // namespace platform
