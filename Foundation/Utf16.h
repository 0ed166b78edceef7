#pragma once

#include "Foundation/TextBuffer.h"

#include <string>
#include <string_view>

namespace foundation {

/// A UTF-16 text in UTF-8. U+FFFD replaces each unpaired surrogate. Throws std::bad_alloc.
[[nodiscard]] TextBuffer utf8FromUtf16(std::u16string_view text);

/// A UTF-8 text in UTF-16, with a byte order mark left as it is. U+FFFD replaces each ill-formed
/// sequence. Throws std::bad_alloc.
[[nodiscard]] std::u16string utf16FromUtf8(std::string_view text);

} // namespace foundation
