#pragma once

#include "Platform/Pasteboard.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A clipboard in memory that records what was asked of it, refuses on demand, and can be filled
/// as another program would fill it. Main thread only.
class MemoryPasteboard final : public Pasteboard {
  public:
    void clearContents() override;
    [[nodiscard]] bool setString(foundation::TextBuffer text, PasteboardType type) override;
    [[nodiscard]] std::optional<foundation::TextBuffer> string(PasteboardType type) override;

    /// Makes setString() refuse that type from now on.
    void refuse(PasteboardType type) { refused_.insert(type); }

    /// Makes string() fail for want of memory from now on.
    void runOutOfMemory() { isOutOfMemory_ = true; }

    /// Another program copies: what was held is gone, and the text or image is there instead.
    void copyElsewhere(std::string_view text);
    void copyImageElsewhere();

    /// What the clipboard holds now, by type; an image is held beside the texts.
    [[nodiscard]] const std::map<PasteboardType, std::string>& contents() const { return texts_; }

    [[nodiscard]] bool holdsImage() const { return holdsImage_; }

    /// How often the clipboard changed hands.
    [[nodiscard]] std::uint64_t changeCount() const { return changeCount_; }

    /// The calls so far: "clear", "set string", "set html", "get string" and "get html", a refused
    /// one with " refused" behind it.
    [[nodiscard]] const std::vector<std::string>& calls() const { return calls_; }

  private:
    std::map<PasteboardType, std::string> texts_;
    std::set<PasteboardType> refused_;
    std::vector<std::string> calls_;
    std::uint64_t changeCount_ = 0;
    bool holdsImage_ = false;
    bool isOutOfMemory_ = false;
};

} // namespace platform
