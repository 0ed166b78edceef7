#pragma once

#include "Text/SheetDocument.h"

#include <string>
#include <system_error>

namespace tools {

/// The payload's count of stickies in decimal, and a line feed.
[[nodiscard]] std::string countOutput(const text::ConversionPayload& payload);

/// Writes the whole payload to a file, pipe or terminal as one line of JSON: an object with "html",
/// "plainText" and "stickyCount", and a line feed. It is written piece by piece, so that a long
/// payload is not in memory a second time. The payload is well-formed UTF-8.
[[nodiscard]] std::error_code writeJson(int descriptor, const text::ConversionPayload& payload);

} // namespace tools
