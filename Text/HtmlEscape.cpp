#include "Text/HtmlEscape.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace text {

namespace {

/// What stands for a byte in the escaped text. The padding to one size lets every byte be written
/// with the same unconditional copy, the next one overwriting what is too much.
struct Replacement {
    std::array<char, 8> bytes{};
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

constexpr const Replacement& replacementOf(char byte) {
    return replacements[static_cast<unsigned char>(byte)];
}

constexpr std::size_t smallBlock = 16;
constexpr std::size_t largeBlock = 64;
static_assert(largeBlock <= escapeSlack);

/// '"' and '&' differ in one bit, and so do '<' and '>': with that bit set, three comparisons find
/// all five characters and no other.
constexpr char quoteBit = '"' ^ '&';
constexpr char bracketBit = '<' ^ '>';
static_assert(('"' | quoteBit) == '&' && ('<' | bracketBit) == '>');

/// Whether one of the five characters stands in a block. Looking for the smallest difference is
/// what compilers do best side by side.
template <std::size_t blockSize>
bool needsEscape(const char* block) {
    unsigned char least = 0xFF;
    const auto compare = [&least](int byte, char special) {
        least = std::min(least, static_cast<unsigned char>(byte ^ special));
    };
    for (std::size_t i = 0; i < blockSize; ++i) {
        compare(block[i] | quoteBit, '&');
        compare(block[i] | bracketBit, '>');
        compare(block[i], '\'');
    }
    return least == 0;
}

char* writeByteByByte(char* out, std::string_view text) {
    for (const char byte : text) {
        const Replacement& replacement = replacementOf(byte);
        std::memcpy(out, replacement.bytes.data(), replacement.bytes.size());
        out += replacement.length;
    }
    return out;
}

/// Writes the whole blocks at the start of `text` and removes them from it. Blocks with nothing to
/// escape are copied as they are, the others are left to `writeOther`.
template <std::size_t blockSize, typename WriteOther>
char* writeBlocks(char* out, std::string_view& text, const WriteOther& writeOther) {
    for (; text.size() >= blockSize; text.remove_prefix(blockSize)) {
        if (needsEscape<blockSize>(text.data())) {
            out = writeOther(out, text.substr(0, blockSize));
        } else {
            std::memcpy(out, text.data(), blockSize);
            out += blockSize;
        }
    }
    return out;
}

char* writeSmallBlocks(char* out, std::string_view text) {
    return writeBlocks<smallBlock>(out, text, writeByteByByte);
}

} // namespace

char* writeEscaped(char* out, std::string_view text, const char* readableEnd) {
    // Short texts are most of all texts and their sizes differ, so they are not cut into blocks:
    // one block is copied whole, and what stands behind the text in it is overwritten later.
    if (text.size() <= largeBlock && readableEnd - text.data() >= std::ptrdiff_t{largeBlock} &&
        !needsEscape<largeBlock>(text.data())) {
        std::memcpy(out, text.data(), largeBlock);
        return out + text.size();
    }
    if (text.size() < smallBlock) {
        return writeByteByByte(out, text);
    }
    const char* const lastBlock = text.data() + text.size() - smallBlock;
    out = writeBlocks<largeBlock>(out, text, writeSmallBlocks);
    out = writeBlocks<smallBlock>(out, text, writeByteByByte);
    // What is left is no block. It is looked at and copied together with bytes before it that make
    // it one: when they need no escaping either, they already stand before `out` as they are.
    if (needsEscape<smallBlock>(lastBlock)) {
        return writeByteByByte(out, text);
    }
    out += text.size();
    std::memcpy(out - smallBlock, lastBlock, smallBlock);
    return out;
}

foundation::TextBuffer escapeHTML(std::string_view text) {
    // In pieces, so that a long text is not given the room that it needs at worst all at once.
    constexpr std::size_t pieceSize = 4096;
    foundation::TextBuffer escaped;
    for (; !text.empty(); text.remove_prefix(std::min(pieceSize, text.size()))) {
        const std::string_view piece = text.substr(0, pieceSize);
        const std::size_t sizeBefore = escaped.size();
        char* const begin =
            escaped.appendUninitialised(piece.size() * longestReplacement + escapeSlack);
        char* const end = writeEscaped(begin, piece, piece.data() + piece.size());
        escaped.truncate(sizeBefore + static_cast<std::size_t>(end - begin));
    }
    return escaped;
}

} // namespace text
