#pragma once

#include <string_view>

namespace text {

/// The text without the white space at both ends, inner white space untouched.
[[nodiscard]] std::string_view trim(std::string_view text);

/// The text without the white space that it begins with.
[[nodiscard]] std::string_view trimStart(std::string_view text);

} // namespace text
