#pragma once

#include <cstddef>
#include <string_view>

namespace text {

inline constexpr char32_t replacementCharacter = U'\uFFFD';

/// What stands at one end of a text.
struct DecodedCharacter {
    /// The code point, or U+FFFD for an ill-formed sequence.
    char32_t codePoint;
    /// In bytes, at least 1. Of an ill-formed sequence, the maximal part that could have begun a
    /// character, which is what one U+FFFD stands for.
    std::size_t length;
    bool isWellFormed;
};

[[nodiscard]] DecodedCharacter decodeFirstBeyondAscii(std::string_view text);
[[nodiscard]] DecodedCharacter decodeLastBeyondAscii(std::string_view text);

/// The first character of a text that is not empty.
[[nodiscard]] inline DecodedCharacter decodeFirst(std::string_view text) {
    const auto byte = static_cast<unsigned char>(text.front());
    return byte < 0x80 ? DecodedCharacter{.codePoint = byte, .length = 1, .isWellFormed = true}
                       : decodeFirstBeyondAscii(text);
}

/// The last character of a text that is not empty. When the text does not end in a well-formed
/// character this is its last byte alone, as an ill-formed sequence.
[[nodiscard]] inline DecodedCharacter decodeLast(std::string_view text) {
    const auto byte = static_cast<unsigned char>(text.back());
    return byte < 0x80 ? DecodedCharacter{.codePoint = byte, .length = 1, .isWellFormed = true}
                       : decodeLastBeyondAscii(text);
}

/// The number of bytes of the well-formed UTF-8 that a text begins with: all of them when there is
/// nothing wrong with it.
[[nodiscard]] std::size_t wellFormedPrefixLength(std::string_view text);

} // namespace text
