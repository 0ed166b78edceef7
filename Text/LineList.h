#pragma once

#include "Foundation/TextBuffer.h"
#include "Text/LineSanitiser.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace text {

class LineList;

/// Told of each line that is not blank: the trimmed line, and what became of it.
using LineObserver = std::function<void(std::string_view line, const SanitizedLine& sanitized)>;

/// Splits a text in UTF-8 at each line feed, carriage return, or pair of the two, trims each line
/// and takes its prefixes off (sanitizeLine). One element per line in their order, the blank ones
/// as empty views; an empty text is one blank line. Memory-safe on any bytes. Throws
/// std::bad_alloc, and whatever the observer throws.
[[nodiscard]] LineList processText(foundation::TextBuffer text, const LineObserver& observer = {});

/// A text and the lines that were found in it: nothing is copied, however long the text. The lines
/// are parts of the text, each behind the one before, so that what they add up to is never more
/// than the text. Move-only; the lines stay valid while the list, or what it was moved to, lives.
class LineList {
  public:
    /// A list of the given lines as they are, which are copied. Throws std::bad_alloc.
    [[nodiscard]] static LineList of(std::span<const std::string_view> lines);

    [[nodiscard]] std::string_view text() const { return text_.view(); }

    [[nodiscard]] std::span<const std::string_view> lines() const { return lines_; }

    [[nodiscard]] std::size_t size() const { return lines_.size(); }

  private:
    friend LineList processText(foundation::TextBuffer text, const LineObserver& observer);

    LineList(foundation::TextBuffer text, std::vector<std::string_view> lines)
        : text_(std::move(text)), lines_(std::move(lines)) {}

    foundation::TextBuffer text_;
    std::vector<std::string_view> lines_;
};

} // namespace text
