#pragma once

#include "Foundation/TextBuffer.h"

#include <string>
#include <string_view>

namespace foundation {

/// A UTF-16 text in UTF-8. U+FFFD stands for each half of a surrogate pair without its other half.
/// Running out of memory throws std::bad_alloc.
[[nodiscard]] TextBuffer utf8FromUtf16(std::u16string_view text);

/// A well-formed UTF-8 text in UTF-16: every character becomes itself, a byte order mark included.
/// Running out of memory throws std::bad_alloc.
[[nodiscard]] std::u16string utf16FromUtf8(std::string_view text);

} // namespace foundation
