#include "Text/Trim.h"

#include "Text/CharacterClasses.h"
#include "Text/Utf8.h"

#include <array>
#include <cstddef>

namespace text {

namespace {

constexpr std::string_view whiteSpace =
    "\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009"
    "\u200A\u2028\u2029\u202F\u205F\u3000";

/// Which bytes white-space characters begin and end with: most text is told from white space by
/// its first or last byte without being decoded.
struct EdgeBytes {
    std::array<bool, 256> first{};
    std::array<bool, 256> last{};
};

constexpr EdgeBytes makeEdgeBytes() {
    const auto byteAt = [](std::size_t i) { return static_cast<unsigned char>(whiteSpace[i]); };
    const auto begins = [byteAt](std::size_t i) { return (byteAt(i) & 0xC0U) != 0x80U; };
    EdgeBytes bytes;
    for (std::size_t i = 0; i < whiteSpace.size(); ++i) {
        bytes.first[byteAt(i)] |= begins(i);
        bytes.last[byteAt(i)] |= i + 1 == whiteSpace.size() || begins(i + 1);
    }
    return bytes;
}

constexpr EdgeBytes edgeBytes = makeEdgeBytes();

std::string_view trimEnd(std::string_view text) {
    while (!text.empty() && edgeBytes.last[static_cast<unsigned char>(text.back())]) {
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
    while (!text.empty() && edgeBytes.first[static_cast<unsigned char>(text.front())]) {
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
