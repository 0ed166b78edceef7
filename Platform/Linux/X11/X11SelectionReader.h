#pragma once

#include "Foundation/Interface.h"
#include "Foundation/Logger.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Linux/X11/X11ClipboardAtoms.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventQueue.h"
#include "Platform/Linux/X11/X11PasteboardLimits.h"
#include "Platform/Linux/X11/X11SelectionRequest.h"
#include "Platform/Pasteboard.h"

#include <xcb/xcb.h>

#include <deque>
#include <optional>
#include <vector>

namespace platform {

/// Reads the text that another program holds in CLIPBOARD.
///
/// What counts as text follows from what the owner offers. Whoever offers a text offers it for
/// pasting, also next to an image of it, as spreadsheets and word processors do. A list of files is
/// no text although file managers offer the names as one: it is told by their own formats, or by a
/// text/uri-list that begins with a file. A copied link is a text/uri-list as well, and a text.
///
/// Main thread only.
class X11SelectionReader : foundation::Pinned {
  public:
    /// Everything outlives the reader.
    X11SelectionReader(const X11Connection& connection,
                       X11EventQueue& events,
                       const X11ClipboardAtoms& atoms,
                       const X11PasteboardLimits& limits,
                       foundation::Logger logger);
    ~X11SelectionReader();

    /// The owner's text: meant to be UTF-8, but as well-formed as the owner sent it. None when
    /// there is no such text, or the owner refuses, falls silent or changes. Throws std::bad_alloc
    /// when the text is longer than the limits allow or does not fit in memory.
    [[nodiscard]] std::optional<foundation::TextBuffer> read(PasteboardType type);

    /// Clears away an answer that came after its request had been given up.
    void handle(const xcb_generic_event_t& event);

  private:
    [[nodiscard]] std::optional<foundation::TextBuffer> ask(X11SelectionRequest& request,
                                                            PasteboardType type) const;
    [[nodiscard]] std::optional<foundation::TextBuffer>
    askForFirst(X11SelectionRequest& request, const std::vector<xcb_atom_t>& targets) const;
    [[nodiscard]] bool mayBeText(X11SelectionRequest& request,
                                 const std::vector<xcb_atom_t>& offered) const;
    [[nodiscard]] bool isOver(X11SelectionRequest::Outcome outcome) const;
    void retire(xcb_window_t window);

    const X11Connection& connection_;
    X11EventQueue& events_;
    const X11ClipboardAtoms& atoms_;
    const X11PasteboardLimits& limits_;
    foundation::Logger logger_;
    int firstXfixesEvent_;
    std::deque<xcb_window_t> retiredWindows_;
};

} // namespace platform
