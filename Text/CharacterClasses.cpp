#include "Text/CharacterClasses.h"

#include "Foundation/Unicode.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace text {

namespace {

/// The zero of each set of decimal digits except ASCII's, in ascending order. The other nine digits
/// of a set follow its zero.
constexpr auto zeroDigits = std::to_array<char32_t>({
    0x0660,  0x06F0,  0x07C0,  0x0966,  0x09E6,  0x0A66,  0x0AE6,  0x0B66,  0x0BE6,  0x0C66,
    0x0CE6,  0x0D66,  0x0DE6,  0x0E50,  0x0ED0,  0x0F20,  0x1040,  0x1090,  0x17E0,  0x1810,
    0x1946,  0x19D0,  0x1A80,  0x1A90,  0x1B50,  0x1BB0,  0x1C40,  0x1C50,  0xA620,  0xA8D0,
    0xA900,  0xA9D0,  0xA9F0,  0xAA50,  0xABF0,  0xFF10,  0x104A0, 0x10D30, 0x11066, 0x110F0,
    0x11136, 0x111D0, 0x112F0, 0x11450, 0x114D0, 0x11650, 0x116C0, 0x11730, 0x118E0, 0x11950,
    0x11C50, 0x11D50, 0x11DA0, 0x11F50, 0x16A60, 0x16AC0, 0x16B50, 0x1D7CE, 0x1D7D8, 0x1D7E2,
    0x1D7EC, 0x1D7F6, 0x1E140, 0x1E2F0, 0x1E4F0, 0x1E950, 0x1FBF0,
});
static_assert(zeroDigits.size() == 67);

constexpr char32_t pageSize = 0x100;

/// Which pages of code points contain decimal digits: rules out most characters without a search.
constexpr auto pagesWithDigits = [] {
    std::array<bool, zeroDigits.back() / pageSize + 1> pages{};
    for (const char32_t zero : zeroDigits) {
        pages[zero / pageSize] = true;
    }
    return pages;
}();

} // namespace

bool isWhiteSpaceBeyondAscii(char32_t character) {
    switch (character) {
    case U'\u0085':
    case U'\u00A0':
    case U'\u1680':
    case U'\u2028':
    case U'\u2029':
    case U'\u202F':
    case U'\u205F':
    case U'\u3000':
        return true;
    default:
        return character >= U'\u2000' && character <= U'\u200A';
    }
}

bool isDecimalDigitBeyondAscii(char32_t character) {
    const std::size_t page = character / pageSize;
    if (page >= pagesWithDigits.size() || !pagesWithDigits[page]) {
        return false;
    }
    const auto* const behind = std::upper_bound(zeroDigits.begin(), zeroDigits.end(), character);
    return behind != zeroDigits.begin() && character - *std::prev(behind) < 10;
}

using foundation::DecodedCharacter;
using foundation::decodeFirst;

std::int64_t countGraphemeClusters(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    std::int64_t count = 1;
    utf8proc_int32_t state = 0;
    DecodedCharacter previous = decodeFirst(text);
    text.remove_prefix(previous.length);
    while (!text.empty()) {
        const DecodedCharacter next = decodeFirst(text);
        text.remove_prefix(next.length);
        if (utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(previous.codePoint),
                                             static_cast<utf8proc_int32_t>(next.codePoint),
                                             &state)) {
            ++count;
        }
        previous = next;
    }
    return count;
}

} // namespace text
