#pragma once

#include "Foundation/TextBuffer.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace foundation {

inline constexpr char32_t replacementCharacter = U'\uFFFD';

struct DecodedCharacter {
    /// U+FFFD for an ill-formed sequence.
    char32_t codePoint;
    /// In bytes, at least 1. For an ill-formed sequence, the maximal subpart that one U+FFFD
    /// replaces.
    std::size_t length;
    bool isWellFormed;
};

/// decodeFirst() for a text whose first byte is not ASCII.
[[nodiscard]] DecodedCharacter decodeFirstBeyondAscii(std::string_view text);

/// Decodes the first character of a non-empty text.
[[nodiscard]] inline DecodedCharacter decodeFirst(std::string_view text) {
    const auto byte = static_cast<unsigned char>(text.front());
    return byte < 0x80 ? DecodedCharacter{.codePoint = byte, .length = 1, .isWellFormed = true}
                       : decodeFirstBeyondAscii(text);
}

/// The number of bytes before the first ill-formed sequence, or the size of a well-formed text.
[[nodiscard]] std::size_t wellFormedPrefixLength(std::string_view text);

/// Replaces each ill-formed sequence (a maximal subpart of a character, or else a single byte) with
/// one U+FFFD. Well-formed text is returned as it is, without a copy. Throws std::bad_alloc.
[[nodiscard]] TextBuffer repairUtf8(TextBuffer text);

/// A UTF-16 text in UTF-8. U+FFFD replaces each unpaired surrogate. Throws std::bad_alloc.
[[nodiscard]] TextBuffer utf8FromUtf16(std::u16string_view text);

/// A UTF-8 text in UTF-16, with a byte order mark left as it is. U+FFFD replaces each ill-formed
/// sequence. Throws std::bad_alloc.
[[nodiscard]] std::u16string utf16FromUtf8(std::string_view text);

} // namespace foundation
