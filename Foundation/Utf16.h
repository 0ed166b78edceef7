#pragma once

#include "Foundation/TextBuffer.h"

#include <string_view>

namespace foundation {

/// A UTF-16 text in UTF-8. U+FFFD stands for each half of a surrogate pair without its other half.
/// Running out of memory throws std::bad_alloc.
[[nodiscard]] TextBuffer utf8FromUtf16(std::u16string_view text);

} // namespace foundation
