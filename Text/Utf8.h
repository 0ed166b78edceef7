#pragma once

#include "Foundation/Utf8.h"

#include <string_view>

namespace text {

using foundation::DecodedCharacter;
using foundation::decodeFirst;
using foundation::replacementCharacter;

/// decodeLast() for a text whose last byte is not ASCII.
[[nodiscard]] DecodedCharacter decodeLastBeyondAscii(std::string_view text);

/// Decodes the last character of a non-empty text. If the text does not end in a well-formed
/// character, this is its last byte alone, as an ill-formed sequence.
[[nodiscard]] inline DecodedCharacter decodeLast(std::string_view text) {
    const auto byte = static_cast<unsigned char>(text.back());
    return byte < 0x80 ? DecodedCharacter{.codePoint = byte, .length = 1, .isWellFormed = true}
                       : decodeLastBeyondAscii(text);
}

} // namespace text
