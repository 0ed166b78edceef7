#pragma once

#include <cstdint>
#include <string_view>

namespace text {

/// The major version of Unicode that both classes follow in every build, whichever version the
/// system's own libraries know.
inline constexpr int unicodeVersion = 15;

[[nodiscard]] bool isWhiteSpaceBeyondAscii(char32_t character);
[[nodiscard]] bool isDecimalDigitBeyondAscii(char32_t character);

/// Whether a character has the property White_Space: 25 code points, including the line breaks.
/// The zero-width space, U+FEFF and the information separators do not have it.
[[nodiscard]] constexpr bool isWhiteSpace(char32_t character) {
    return character < 0x80 ? character == U' ' || (character >= U'\t' && character <= U'\r')
                            : isWhiteSpaceBeyondAscii(character);
}

/// Whether a character is a decimal digit, general category Nd: 680 code points.
[[nodiscard]] constexpr bool isDecimalDigit(char32_t character) {
    return character < 0x80 ? character >= U'0' && character <= U'9'
                            : isDecimalDigitBeyondAscii(character);
}

/// The number of characters as a user sees them: extended grapheme clusters, a carriage return and
/// line feed together being one. Each ill-formed sequence counts as one U+FFFD. Takes several times
/// as long as a conversion does.
[[nodiscard]] std::int64_t countGraphemeClusters(std::string_view text);

} // namespace text
