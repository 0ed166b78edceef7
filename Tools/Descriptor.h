#pragma once

#include "Foundation/TextBuffer.h"

#include <string_view>
#include <system_error>

namespace tools {

/// Appends everything up to the end of a file, pipe or terminal to `text`. On failure `text` holds
/// what came before it. Throws std::bad_alloc.
[[nodiscard]] std::error_code readToEnd(int descriptor, foundation::TextBuffer& text);

/// Writes the whole text. The caller ignores SIGPIPE to be told of a reader that went away.
[[nodiscard]] std::error_code writeAll(int descriptor, std::string_view text);

} // namespace tools
