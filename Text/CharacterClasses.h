#pragma once

namespace text {

[[nodiscard]] bool isWhiteSpaceBeyondAscii(char32_t character);
[[nodiscard]] bool isDecimalDigitBeyondAscii(char32_t character);

/// Whether a character has the Unicode property White_Space: 25 code points, the line breaks
/// among them. The zero-width space, U+FEFF and the information separators are not white space.
[[nodiscard]] inline bool isWhiteSpace(char32_t character) {
    return character < 0x80 ? character == U' ' || (character >= U'\t' && character <= U'\r')
                            : isWhiteSpaceBeyondAscii(character);
}

/// Whether a character is a decimal digit, general category Nd: the 680 code points of Unicode 15
/// in every build, whatever the Unicode library beside it knows.
[[nodiscard]] inline bool isDecimalDigit(char32_t character) {
    return character < 0x80 ? character >= U'0' && character <= U'9'
                            : isDecimalDigitBeyondAscii(character);
}

} // namespace text
