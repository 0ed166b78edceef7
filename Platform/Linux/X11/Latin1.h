#pragma once

#include "Foundation/TextBuffer.h"

#include <string_view>

namespace platform {

/// The UTF-8 form of a text in ISO 8859-1, where each byte is one character. Throws std::bad_alloc.
[[nodiscard]] foundation::TextBuffer utf8FromLatin1(std::string_view latin1);

/// The ISO 8859-1 form of a well-formed UTF-8 text, with '?' for each character that it does not
/// have. Throws std::bad_alloc.
[[nodiscard]] foundation::TextBuffer latin1FromUtf8(std::string_view utf8);

} // namespace platform
