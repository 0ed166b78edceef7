#pragma once

#include "Platform/Memory/Journal.h"
#include "Platform/Pasteboard.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace platform {

/// A clipboard in memory that refuses on demand and lets tests copy as another program would. Main
/// thread only.
///
/// The journal has "clear", "set string", "set html", "get string" and "get html", with the suffix
/// " refused" if refused.
class MemoryPasteboard final : public Pasteboard, public Journaled {
  public:
    using Journaled::Journaled;

    void clearContents() override;
    [[nodiscard]] bool setString(foundation::TextBuffer text, PasteboardType type) override;
    [[nodiscard]] std::optional<foundation::TextBuffer> string(PasteboardType type) override;

    /// Makes setString() refuse that type from now on.
    void refuse(PasteboardType type) { refused_.insert(type); }

    /// Makes string() run out of memory from now on.
    void runOutOfMemory() { isOutOfMemory_ = true; }

    /// Another program copies: the text or image replaces the contents.
    void copyElsewhere(std::string_view text);
    void copyImageElsewhere();

    /// The texts in the clipboard, without an image.
    [[nodiscard]] const std::map<PasteboardType, std::string>& contents() const { return texts_; }

    [[nodiscard]] bool holdsImage() const { return holdsImage_; }

    /// The number of ownership changes.
    [[nodiscard]] std::uint64_t changeCount() const { return changeCount_; }

  private:
    std::map<PasteboardType, std::string> texts_;
    std::set<PasteboardType> refused_;
    std::uint64_t changeCount_ = 0;
    bool holdsImage_ = false;
    bool isOutOfMemory_ = false;
};

} // namespace platform
