#include "Text/Trim.h"

#include "Text/CharacterClasses.h"
#include "Text/Utf8.h"

namespace text {

namespace {

std::string_view trimEnd(std::string_view text) {
    while (!text.empty()) {
        const DecodedCharacter last = decodeLast(text);
        if (!isWhiteSpace(last.codePoint)) {
            break;
        }
        text.remove_suffix(last.length);
    }
    return text;
}

} // namespace

std::string_view trimStart(std::string_view text) {
    while (!text.empty()) {
        const DecodedCharacter first = decodeFirst(text);
        if (!isWhiteSpace(first.codePoint)) {
            break;
        }
        text.remove_prefix(first.length);
    }
    return text;
}

std::string_view trim(std::string_view text) {
    return trimEnd(trimStart(text));
}

} // namespace text
