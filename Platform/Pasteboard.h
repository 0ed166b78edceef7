#pragma once

#include "Foundation/Interface.h"
#include "Foundation/TextBuffer.h"

#include <cstdint>
#include <optional>

namespace platform {

/// The representations that the program reads and writes. Each backend maps them to its system's
/// names.
enum class PasteboardType : std::uint8_t { string, html };

/// The system's general clipboard, as text.
///
/// Texts are UTF-8. Those that string() returns are well-formed: each backend replaces every
/// ill-formed sequence with one U+FFFD. Main thread only. Every operation is synchronous and
/// bounded in time, whatever the program that owns the clipboard does. Running out of memory is a
/// failure like any other: nothing throws.
///
/// clearContents() and the setString() calls in the same turn of the event loop become visible to
/// other programs together, as one change of the clipboard.
class Pasteboard : public foundation::Interface {
  public:
    /// Takes over the clipboard, empty at first. If that fails, setString() refuses.
    virtual void clearContents() = 0;

    /// Adds a representation to the contents begun by clearContents(). False if the system refuses,
    /// memory runs out, or another program has taken the clipboard since; the text is then lost.
    [[nodiscard]] virtual bool setString(foundation::TextBuffer text, PasteboardType type) = 0;

    /// The clipboard's text of that type, which may be empty. nullopt if there is no such text, or
    /// its owner refuses, does not respond, or sends more than fits in memory: the clipboard is
    /// unchanged, and the caller must not take this for an empty text.
    [[nodiscard]] virtual std::optional<foundation::TextBuffer> string(PasteboardType type) = 0;
};

} // namespace platform
