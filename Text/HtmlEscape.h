#pragma once

#include "Foundation/TextBuffer.h"

#include <cstddef>
#include <string_view>

namespace text {

/// The text with & < > " ' replaced by "&amp;" "&lt;" "&gt;" "&quot;" "&#39;" and every other byte
/// as it was. Entities that the text already holds are text like any other. Throws std::bad_alloc.
[[nodiscard]] foundation::TextBuffer escapeHTML(std::string_view text);

/// The longest that any byte becomes.
inline constexpr std::size_t longestReplacement = std::string_view("&quot;").size();

/// How many bytes behind the escaped text writeEscaped() may overwrite.
inline constexpr std::size_t escapeSlack = 64;

/// Writes the escaped text to `out`, which has room for longestReplacement bytes for each byte of
/// the text and for escapeSlack, and returns the end of what was written. The bytes behind the text
/// up to `readableEnd` may be looked at, which spares a short text the search for its own end.
[[nodiscard]] char* writeEscaped(char* out, std::string_view text, const char* readableEnd);

} // namespace text
