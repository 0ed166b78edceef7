#include "Text/Utf8.h"

#include <algorithm>

namespace text {

DecodedCharacter decodeLastBeyondAscii(std::string_view text) {
    for (std::size_t length = 2; length <= std::min<std::size_t>(4, text.size()); ++length) {
        const std::string_view tail = text.substr(text.size() - length);
        if ((static_cast<unsigned char>(tail.front()) & 0xC0U) != 0x80U) {
            const DecodedCharacter character = decodeFirst(tail);
            if (character.isWellFormed && character.length == length) {
                return character;
            }
            break;
        }
    }
    return {.codePoint = replacementCharacter, .length = 1, .isWellFormed = false};
}

} // namespace text
