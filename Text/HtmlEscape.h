#pragma once

#include "Foundation/TextBuffer.h"

#include <string_view>

namespace text {

/// The text with & < > " ' replaced by "&amp;" "&lt;" "&gt;" "&quot;" "&#39;" and every other byte
/// unchanged. Entities in the text are not recognised. Throws std::bad_alloc.
[[nodiscard]] foundation::TextBuffer escapeHTML(std::string_view text);

/// Appends the escaped text to `html` and the text itself to `plainText`. Reads bytes behind the
/// text up to `readableEnd`, which lets it copy in blocks. Throws std::bad_alloc.
void appendEscaped(std::string_view text,
                   const char* readableEnd,
                   foundation::TextBuffer& html,
                   foundation::TextBuffer& plainText);

} // namespace text
