#pragma once

#include "Foundation/Interface.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Linux/X11/X11ClipboardContext.h"
#include "Platform/Linux/X11/X11SelectionRequest.h"
#include "Platform/Pasteboard.h"

#include <xcb/xcb.h>

#include <deque>
#include <optional>
#include <vector>

namespace platform {

/// Reads the text that another client owns in CLIPBOARD. Main thread only.
class X11SelectionReader : foundation::Pinned {
  public:
    /// The context outlives the reader.
    explicit X11SelectionReader(X11ClipboardContext& context) : context_(context) {}

    ~X11SelectionReader();

    /// The owner's text as well-formed UTF-8. nullopt if there is no such text, or the owner
    /// refuses, does not respond or changes. Throws std::bad_alloc if the text exceeds the size
    /// limit or memory.
    [[nodiscard]] std::optional<foundation::TextBuffer> read(PasteboardType type);

    /// Deletes an answer that arrived after its request was given up.
    void handle(const xcb_generic_event_t& event);

  private:
    [[nodiscard]] std::optional<foundation::TextBuffer>
    firstOf(const std::vector<TextFormat>& formats, X11SelectionRequest& request) const;
    [[nodiscard]] bool listsFiles(const FormatNames& offers, X11SelectionRequest& request) const;
    [[nodiscard]] bool isOver(X11SelectionRequest::Outcome outcome) const;
    void retire(xcb_window_t window);

    X11ClipboardContext& context_;
    std::deque<xcb_window_t> retiredWindows_;
};

} // namespace platform
