#pragma once

#include "Foundation/TextBuffer.h"
#include "Text/LineSanitiser.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace text {

/// The position of the first line feed or carriage return in a text, or the text's size.
[[nodiscard]] std::size_t findLineBreak(std::string_view text);

/// Calls `action` with each line of a text, split at each line feed, carriage return, or pair of
/// the two, blank lines included. A text without a line break is one line.
template <typename Action>
void forEachLine(std::string_view text, const Action& action) {
    while (true) {
        const std::size_t size = findLineBreak(text);
        action(text.substr(0, size));
        if (size == text.size()) {
            return;
        }
        const bool isPair = text[size] == '\r' && text.substr(size + 1).starts_with('\n');
        text.remove_prefix(size + (isPair ? 2 : 1));
    }
}

/// A text as a list of its lines, each trimmed and without list prefixes. Neither copies the text
/// nor keeps an index: the lines are found whenever the list is read. Move-only.
class LineList {
  public:
    explicit LineList(foundation::TextBuffer text) : text_(std::move(text)) {}

    [[nodiscard]] std::string_view text() const { return text_.view(); }

    /// The number of lines, blank ones included.
    [[nodiscard]] std::int64_t size() const;

    /// Calls `action` with each line in order, blank ones included. Each is a part of text().
    template <typename Action>
    void forEach(const Action& action) const {
        forEachLine(text(), [&action](std::string_view line) { action(sanitizeLine(line).text); });
    }

  private:
    foundation::TextBuffer text_;
};

} // namespace text
