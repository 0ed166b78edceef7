#pragma once

namespace text {

/// Whether a character has the Unicode property White_Space: 25 code points, the line breaks
/// among them. The zero-width space, U+FEFF and the information separators are not white space.
[[nodiscard]] bool isWhiteSpace(char32_t character);

/// Whether a character is a decimal digit, general category Nd: the 680 code points of Unicode 15
/// in every build, whatever the Unicode library beside it knows.
[[nodiscard]] bool isDecimalDigit(char32_t character);

} // namespace text
