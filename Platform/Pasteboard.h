#pragma once

#include "Foundation/Interface.h"
#include "Foundation/TextBuffer.h"

#include <cstdint>
#include <optional>

namespace platform {

/// The representations that the program reads and writes. Each backend knows what its system calls
/// them.
enum class PasteboardType : std::uint8_t { string, html };

/// The system's general clipboard, as text.
///
/// Every text is well-formed UTF-8: a backend that reads something else from its system puts
/// U+FFFD in the place of each ill-formed sequence, so that nobody behind this door has to ask.
/// Main thread only; every operation is synchronous and bounded in time, whatever the program that
/// owns the clipboard does. Running out of memory is a failure like any other: nothing throws.
///
/// What clearContents() and the setString() calls of one turn of the event loop leave behind
/// becomes visible to other programs at once, as one change of the clipboard.
class Pasteboard : public foundation::Interface {
  public:
    /// Takes the clipboard over, with nothing in it. Where that fails, setString() refuses.
    virtual void clearContents() = 0;

    /// Adds a representation to what the last clearContents() began. False when the system
    /// refuses, memory runs out, or another program has taken the clipboard since; the text is lost
    /// then.
    [[nodiscard]] virtual bool setString(foundation::TextBuffer text, PasteboardType type) = 0;

    /// The clipboard's text of that type, an empty one included. None when the clipboard holds no
    /// such text, or when its owner refuses, falls silent or sends more than fits in memory: the
    /// clipboard is as it was, and the caller must not take it for an empty text.
    [[nodiscard]] virtual std::optional<foundation::TextBuffer> string(PasteboardType type) = 0;
};

} // namespace platform
