#include "Platform/Linux/X11/Latin1.h"

#include <algorithm>
#include <cstddef>

namespace platform {

namespace {

constexpr unsigned char firstNonAscii = 0x80;
constexpr unsigned char continuationMask = 0xC0;
constexpr unsigned char continuationPattern = 0x80;
constexpr unsigned char payloadMask = 0x3F;
constexpr unsigned payloadBits = 6;
// The lead bytes of the two-byte sequences for U+0080-00BF and U+00C0-00FF.
constexpr unsigned char lowLead = 0xC2;
constexpr unsigned char highLead = 0xC3;

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & continuationMask) == continuationPattern;
}

} // namespace

foundation::TextBuffer utf8FromLatin1(std::string_view latin1) {
    const auto isNonAscii = [](char c) { return static_cast<unsigned char>(c) >= firstNonAscii; };
    const auto longer =
        static_cast<std::size_t>(std::count_if(latin1.begin(), latin1.end(), isNonAscii));
    foundation::TextBuffer utf8;
    if (latin1.empty()) {
        return utf8;
    }
    char* out = utf8.appendUninitialised(latin1.size() + longer);
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < firstNonAscii) {
            *out++ = c;
        } else {
            *out++ = static_cast<char>(lowLead + ((byte >> payloadBits) & 1U));
            *out++ = static_cast<char>(continuationPattern | (byte & payloadMask));
        }
    }
    return utf8;
}

foundation::TextBuffer latin1FromUtf8(std::string_view utf8) {
    foundation::TextBuffer latin1;
    if (utf8.empty()) {
        return latin1;
    }
    char* const first = latin1.appendUninitialised(utf8.size());
    char* out = first;
    std::size_t at = 0;
    while (at < utf8.size()) {
        const auto lead = static_cast<unsigned char>(utf8[at++]);
        char character = '?';
        if (lead < firstNonAscii) {
            character = static_cast<char>(lead);
        } else if ((lead == lowLead || lead == highLead) && at < utf8.size()) {
            const unsigned low = static_cast<unsigned char>(utf8[at]) & payloadMask;
            const unsigned high = lead & 3U;
            character = static_cast<char>((high << payloadBits) | low);
        }
        *out++ = character;
        while (at < utf8.size() && isContinuation(utf8[at])) {
            ++at;
        }
    }
    latin1.truncate(static_cast<std::size_t>(out - first));
    return latin1;
}

} // namespace platform
