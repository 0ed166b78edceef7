#include "Foundation/Utf16.h"

#include "Foundation/Utf8.h"

#include <cstddef>

namespace foundation {

namespace {

constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Writes the scalar and returns where the next one goes.
char* append(char* out, char32_t scalar) {
    const auto byte = [](char32_t value) { return static_cast<char>(value); };
    if (scalar < 0x80) {
        *out++ = byte(scalar);
        return out;
    }
    if (scalar < 0x800) {
        *out++ = byte(0xC0U | scalar >> 6U);
    } else {
        if (scalar < 0x10000) {
            *out++ = byte(0xE0U | scalar >> 12U);
        } else {
            *out++ = byte(0xF0U | scalar >> 18U);
            *out++ = byte(0x80U | (scalar >> 12U & 0x3FU));
        }
        *out++ = byte(0x80U | (scalar >> 6U & 0x3FU));
    }
    *out++ = byte(0x80U | (scalar & 0x3FU));
    return out;
}

} // namespace

TextBuffer utf8FromUtf16(std::u16string_view text) {
    // A unit alone takes three bytes at most, a pair four.
    constexpr std::size_t mostBytes = 3;
    TextBuffer utf8;
    char* const begin = utf8.appendUninitialised(mostBytes * text.size());
    char* out = begin;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t scalar = text[i];
        if (isHighSurrogate(scalar) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            ++i;
            scalar = 0x10000 + ((scalar - 0xD800) << 10U) + (text[i] - 0xDC00U);
        } else if (isHighSurrogate(scalar) || isLowSurrogate(scalar)) {
            scalar = replacementCharacter;
        }
        out = append(out, scalar);
    }
    utf8.truncate(static_cast<std::size_t>(out - begin));
    return utf8;
}

std::u16string utf16FromUtf8(std::string_view text) {
    std::u16string utf16;
    utf16.reserve(text.size());
    while (!text.empty()) {
        const DecodedCharacter character = decodeFirst(text);
        const char32_t scalar = character.codePoint;
        if (scalar >= 0x10000) {
            utf16 += static_cast<char16_t>(0xD7C0 + (scalar >> 10U));
            utf16 += static_cast<char16_t>(0xDC00 + (scalar & 0x3FFU));
        } else {
            utf16 += static_cast<char16_t>(scalar);
        }
        text.remove_prefix(character.length);
    }
    return utf16;
}

} // namespace foundation
