#pragma once

#include "Foundation/TextBuffer.h"
#include "Text/ConversionPayload.h"

namespace tools {

/// The payload's count of stickies in decimal, and a line feed.
[[nodiscard]] foundation::TextBuffer countOutput(const text::ConversionPayload& payload);

/// The whole payload as one line of JSON: an object with "html", "plainText" and "stickyCount",
/// and a line feed. The payload is well-formed UTF-8.
[[nodiscard]] foundation::TextBuffer jsonOutput(const text::ConversionPayload& payload);

} // namespace tools
