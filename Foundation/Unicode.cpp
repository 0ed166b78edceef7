#include "Foundation/Unicode.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace foundation {

namespace {

constexpr std::size_t blockSize = 32;
constexpr std::string_view encodedReplacement = "\uFFFD";

/// What a lead byte determines: the length of the sequence in bytes, the payload bits of the lead
/// byte, and the valid range of the second byte. Length 0: not the lead byte of a longer sequence.
struct LeadByte {
    std::size_t length = 0;
    char32_t bits = 0;
    std::uint8_t secondLow = 0x80;
    std::uint8_t secondHigh = 0xBF;
};

std::uint8_t byteAt(std::string_view text, std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

LeadByte leadByte(std::uint8_t byte) {
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {.length = 2, .bits = byte & 0x1FU};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        // No overlong forms, no surrogates.
        return {.length = 3,
                .bits = byte & 0x0FU,
                .secondLow = byte == 0xE0 ? std::uint8_t{0xA0} : std::uint8_t{0x80},
                .secondHigh = byte == 0xED ? std::uint8_t{0x9F} : std::uint8_t{0xBF}};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        // No overlong forms, nothing beyond U+10FFFF.
        return {.length = 4,
                .bits = byte & 0x07U,
                .secondLow = byte == 0xF0 ? std::uint8_t{0x90} : std::uint8_t{0x80},
                .secondHigh = byte == 0xF4 ? std::uint8_t{0x8F} : std::uint8_t{0xBF}};
    }
    return {};
}

bool isAsciiBlock(const char* block) {
    unsigned char bits = 0;
    for (std::size_t i = 0; i < blockSize; ++i) {
        bits |= static_cast<unsigned char>(block[i]);
    }
    return bits < 0x80;
}

} // namespace

DecodedCharacter decodeFirstBeyondAscii(std::string_view text) {
    const LeadByte lead = leadByte(byteAt(text, 0));
    if (lead.length == 0) {
        return {.codePoint = replacementCharacter, .length = 1, .isWellFormed = false};
    }
    char32_t codePoint = lead.bits;
    for (std::size_t i = 1; i < lead.length; ++i) {
        const std::uint8_t low = i == 1 ? lead.secondLow : 0x80;
        const std::uint8_t high = i == 1 ? lead.secondHigh : 0xBF;
        if (i == text.size() || byteAt(text, i) < low || byteAt(text, i) > high) {
            return {.codePoint = replacementCharacter, .length = i, .isWellFormed = false};
        }
        codePoint = codePoint << 6U | (byteAt(text, i) & 0x3FU);
    }
    return {.codePoint = codePoint, .length = lead.length, .isWellFormed = true};
}

std::size_t wellFormedPrefixLength(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (text.size() - at >= blockSize && isAsciiBlock(text.data() + at)) {
            at += blockSize;
            continue;
        }
        const std::size_t blockEnd = std::min(text.size(), at + blockSize);
        while (at < blockEnd) {
            const DecodedCharacter character = decodeFirst(text.substr(at));
            if (!character.isWellFormed) {
                return at;
            }
            at += character.length;
        }
    }
    return at;
}

TextBuffer repairUtf8(TextBuffer text) {
    std::string_view rest = text.view();
    std::size_t wellFormed = wellFormedPrefixLength(rest);
    if (wellFormed == rest.size()) {
        return text;
    }
    TextBuffer repaired;
    repaired.reserve(rest.size());
    while (wellFormed < rest.size()) {
        repaired.append(rest.substr(0, wellFormed));
        repaired.append(encodedReplacement);
        rest.remove_prefix(wellFormed);
        rest.remove_prefix(decodeFirst(rest).length);
        wellFormed = wellFormedPrefixLength(rest);
    }
    repaired.append(rest);
    return repaired;
}

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
