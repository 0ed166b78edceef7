#pragma once

#include "Foundation/TextBuffer.h"

namespace text {

/// Makes any bytes well-formed UTF-8: each ill-formed sequence becomes one U+FFFD, where a sequence
/// is the longest run of bytes that could have begun a character, or else one byte. A text that is
/// well-formed comes back as it is, in the same memory. Throws std::bad_alloc.
[[nodiscard]] foundation::TextBuffer repairUtf8(foundation::TextBuffer text);

} // namespace text
