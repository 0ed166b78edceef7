#include "Text/HtmlEscape.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace text {

namespace {

/// What stands for a byte in the escaped text. The padding to one size lets every byte be written
/// with the same unconditional copy, the next one overwriting what is too much.
struct Replacement {
    std::array<char, escapeSlack + 1> bytes{};
    std::uint8_t length = 1;
};

using ReplacementTable = std::array<Replacement, 256>;

constexpr ReplacementTable makeReplacements() {
    ReplacementTable table;
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table[byte].bytes[0] = static_cast<char>(byte);
    }
    const auto replace = [&table](char character, std::string_view entity) {
        Replacement& replacement = table[static_cast<unsigned char>(character)];
        std::copy(entity.begin(), entity.end(), replacement.bytes.begin());
        replacement.length = static_cast<std::uint8_t>(entity.size());
    };
    replace('&', "&amp;");
    replace('<', "&lt;");
    replace('>', "&gt;");
    replace('"', "&quot;");
    replace('\'', "&#39;");
    return table;
}

constexpr ReplacementTable replacements = makeReplacements();

const Replacement& replacementOf(char byte) {
    return replacements[static_cast<unsigned char>(byte)];
}

constexpr std::size_t blockSize = 16;

/// Without a branch inside, so that the compiler compares the bytes of a block side by side.
bool needsEscape(const char* block) {
    unsigned found = 0;
    for (std::size_t i = 0; i < blockSize; ++i) {
        const char byte = block[i];
        found |= static_cast<unsigned>(byte == '&') | static_cast<unsigned>(byte == '<') |
                 static_cast<unsigned>(byte == '>') | static_cast<unsigned>(byte == '"') |
                 static_cast<unsigned>(byte == '\'');
    }
    return found != 0;
}

std::size_t escapedSizeByteByByte(std::string_view text) {
    std::size_t size = 0;
    for (const char byte : text) {
        size += replacementOf(byte).length;
    }
    return size;
}

char* writeEscapedByteByByte(char* out, std::string_view text) {
    for (const char byte : text) {
        const Replacement& replacement = replacementOf(byte);
        std::memcpy(out, replacement.bytes.data(), replacement.bytes.size());
        out += replacement.length;
    }
    return out;
}

} // namespace

std::size_t escapedSize(std::string_view text) {
    std::size_t size = 0;
    while (text.size() >= blockSize) {
        size +=
            needsEscape(text.data()) ? escapedSizeByteByByte(text.substr(0, blockSize)) : blockSize;
        text.remove_prefix(blockSize);
    }
    return size + escapedSizeByteByByte(text);
}

char* writeEscaped(char* out, std::string_view text) {
    while (text.size() >= blockSize) {
        if (needsEscape(text.data())) {
            out = writeEscapedByteByByte(out, text.substr(0, blockSize));
        } else {
            std::memcpy(out, text.data(), blockSize);
            out += blockSize;
        }
        text.remove_prefix(blockSize);
    }
    return writeEscapedByteByByte(out, text);
}

foundation::TextBuffer escapeHTML(std::string_view text) {
    const std::size_t size = escapedSize(text);
    foundation::TextBuffer escaped;
    static_cast<void>(writeEscaped(escaped.appendUninitialised(size + escapeSlack), text));
    escaped.truncate(size);
    return escaped;
}

} // namespace text
