#pragma once

#include "Foundation/TextBuffer.h"

#include <string_view>
#include <system_error>

namespace tools {

/// Reads a file, pipe or terminal to its end and appends the bytes to `text`. On failure `text`
/// holds what was read before. Throws std::bad_alloc.
[[nodiscard]] std::error_code readToEnd(int descriptor, foundation::TextBuffer& text);

/// Writes the whole text. Callers ignore SIGPIPE to get EPIPE when the reader has closed a pipe.
[[nodiscard]] std::error_code writeAll(int descriptor, std::string_view text);

} // namespace tools
