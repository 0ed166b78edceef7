#include "Platform/Linux/Clipboard/TextTransfer.h"

#include "Foundation/Unicode.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>
#include <utility>

namespace platform {

namespace {

using foundation::TextBuffer;

TextBuffer utf8FromLatin1(std::string_view latin1) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    const auto asciiCount =
        static_cast<std::size_t>(std::count_if(latin1.begin(), latin1.end(), isAscii));
    TextBuffer utf8;
    char* out = utf8.appendUninitialised(2 * latin1.size() - asciiCount);
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            *out++ = c;
        } else {
            *out++ = static_cast<char>(0xC0U | byte >> 6U);
            *out++ = static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return utf8;
}

TextBuffer latin1FromUtf8(std::string_view utf8) {
    TextBuffer latin1;
    char* const first = latin1.appendUninitialised(utf8.size());
    char* out = first;
    while (!utf8.empty()) {
        const foundation::DecodedCharacter character = foundation::decodeFirst(utf8);
        *out++ = character.codePoint <= 0xFF ? static_cast<char>(character.codePoint) : '?';
        utf8.remove_prefix(character.length);
    }
    latin1.truncate(static_cast<std::size_t>(out - first));
    return latin1;
}

bool isWellFormed(std::string_view text) {
    return foundation::wellFormedPrefixLength(text) == text.size();
}

} // namespace

bool contains(const FormatNames& offers, std::string_view name) {
    return std::find(offers.begin(), offers.end(), name) != offers.end();
}

std::vector<TextFormat> acceptable(PasteboardType type, const FormatNames& offers) {
    std::vector<TextFormat> formats;
    const auto isOffered = [&](std::string_view name) { return contains(offers, name); };
    if (std::none_of(fileListFormats.begin(), fileListFormats.end(), isOffered)) {
        std::copy_if(
            acceptedFormats.begin(),
            acceptedFormats.end(),
            std::back_inserter(formats),
            [&](const TextFormat& one) { return one.type == type && isOffered(one.name); });
    }
    return formats;
}

bool startsWithFile(std::string_view uriList) {
    while (uriList.starts_with('#')) {
        const std::size_t end = uriList.find('\n');
        uriList.remove_prefix(end == std::string_view::npos ? uriList.size() : end + 1);
    }
    constexpr std::string_view scheme = "file:";
    return uriList.size() >= scheme.size() &&
           std::equal(scheme.begin(), scheme.end(), uriList.begin(), [](char expected, char c) {
               return std::tolower(static_cast<unsigned char>(c)) == expected;
           });
}

TextBuffer decode(TextBuffer bytes, TextEncoding encoding) {
    if (encoding == TextEncoding::utf8) {
        return foundation::repairUtf8(std::move(bytes));
    }
    if (encoding == TextEncoding::utf8OrLatin1 && isWellFormed(bytes.view())) {
        return bytes;
    }
    return utf8FromLatin1(bytes.view());
}

std::shared_ptr<const TextBuffer> encode(std::shared_ptr<const TextBuffer> text,
                                         TextEncoding encoding) {
    if (encoding != TextEncoding::latin1) {
        return text;
    }
    return std::make_shared<const TextBuffer>(latin1FromUtf8(text->view()));
}

} // namespace platform
