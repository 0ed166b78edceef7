#include "Text/SheetDocument.h"

#include "Text/SheetFragments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>

namespace text {

namespace {

/// Longer than most lines, which are then copied without a loop.
constexpr std::size_t blockSize = 32;

/// What stands for a byte in the escaped text, padded to one size to be copied without a branch.
struct Replacement {
    std::array<char, 8> bytes{};
    std::size_t length = 1;
};

constexpr std::size_t longestReplacement = std::string_view("&quot;").size();

constexpr auto replacements = [] {
    std::array<Replacement, 256> table;
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table[byte].bytes[0] = static_cast<char>(byte);
    }
    const auto replace = [&table](unsigned char byte, std::string_view entity) {
        std::copy(entity.begin(), entity.end(), table[byte].bytes.begin());
        table[byte].length = entity.size();
    };
    replace('&', "&amp;");
    replace('<', "&lt;");
    replace('>', "&gt;");
    replace('"', "&quot;");
    replace('\'', "&#39;");
    return table;
}();

/// '"' and '&' differ in one bit, as do '<' and '>'. The loop has no branch, so compilers compare
/// many bytes at once.
bool hasMarkup(const char* block) {
    unsigned char least = 0xFF;
    for (std::size_t i = 0; i < blockSize; ++i) {
        const auto quote = static_cast<unsigned char>((block[i] | ('"' ^ '&')) ^ '&');
        const auto bracket = static_cast<unsigned char>((block[i] | ('<' ^ '>')) ^ '>');
        const auto apostrophe = static_cast<unsigned char>(block[i] ^ '\'');
        least = std::min({least, quote, bracket, apostrophe});
    }
    return least == 0;
}

char* writeByteByByte(char* out, std::string_view text) {
    for (const char byte : text) {
        const Replacement& replacement = replacements[static_cast<unsigned char>(byte)];
        std::memcpy(out, replacement.bytes.data(), replacement.bytes.size());
        out += replacement.length;
    }
    return out;
}

} // namespace

foundation::TextBuffer escapeHTML(std::string_view text) {
    foundation::TextBuffer html;
    foundation::TextBuffer plainText;
    appendEscaped(text, text.data() + text.size(), html, plainText);
    return html;
}

void appendEscaped(std::string_view text,
                   const char* readableEnd,
                   foundation::TextBuffer& html,
                   foundation::TextBuffer& plainText) {
    char* escaped = html.appendUninitialised(text.size() * longestReplacement + blockSize);
    char* plain = plainText.appendUninitialised(text.size() + blockSize);
    while (!text.empty()) {
        const std::string_view block = text.substr(0, blockSize);
        if (readableEnd - block.data() < std::ptrdiff_t{blockSize}) {
            std::memcpy(plain, block.data(), block.size());
            escaped = writeByteByByte(escaped, block);
        } else {
            std::memcpy(plain, block.data(), blockSize);
            if (hasMarkup(block.data())) {
                escaped = writeByteByByte(escaped, block);
            } else {
                std::memcpy(escaped, block.data(), blockSize);
                escaped += block.size();
            }
        }
        plain += block.size();
        text.remove_prefix(block.size());
    }
    html.truncate(static_cast<std::size_t>(escaped - html.view().data()));
    plainText.truncate(static_cast<std::size_t>(plain - plainText.view().data()));
}

namespace {

namespace fragment = sheet_fragment;

/// What separates two cells: the end of a row, a line feed and the start of the next row.
constexpr auto separator = [] {
    std::array<char, fragment::rowEnd.size() + 1 + fragment::rowStart.size()> bytes{};
    auto* const next = std::copy(fragment::rowEnd.begin(), fragment::rowEnd.end(), bytes.begin());
    *next = '\n';
    std::copy(fragment::rowStart.begin(), fragment::rowStart.end(), next + 1);
    return bytes;
}();

/// Appends a row to the html and a line to the plain text.
void appendRow(ConversionPayload& payload, std::string_view line, const char* readableEnd) {
    if (payload.stickyCount == 0) {
        payload.html.append(fragment::rowStart);
    } else {
        payload.html.append({separator.data(), separator.size()});
        payload.plainText.append("\n");
    }
    appendEscaped(line, readableEnd, payload.html, payload.plainText);
    ++payload.stickyCount;
}

} // namespace

void appendHead(ConversionPayload& payload) {
    payload.html.append(fragment::head);
}

void appendRows(ConversionPayload& payload, std::string_view text) {
    const char* const readableEnd = text.data() + text.size();
    forEachLine(text, [&payload, readableEnd](std::string_view line) {
        line = sanitizeLine(line).text;
        if (!line.empty()) {
            appendRow(payload, line, readableEnd);
        }
    });
}

void appendLines(ConversionPayload& payload, std::string_view text) {
    forEachLine(text, [&payload](std::string_view line) {
        line = sanitizeLine(line).text;
        if (!line.empty()) {
            payload.plainText.append(payload.stickyCount == 0 ? "" : "\n");
            payload.plainText.append(line);
            ++payload.stickyCount;
        }
    });
}

void appendTail(ConversionPayload& payload) {
    const std::string count = std::to_string(payload.stickyCount);
    for (const std::string_view part : {
             payload.stickyCount > 0 ? fragment::rowEnd : std::string_view(),
             fragment::tableEndAndGridDataOpening,
             fragment::gridJsonStart,
             std::string_view(count),
             fragment::gridJsonEnd,
             fragment::gridDataClosingAndAnalyticsDataOpening,
             fragment::analyticsJsonStart,
             std::string_view(count),
             fragment::analyticsJsonMiddle,
             std::string_view(count),
             fragment::analyticsJsonEnd,
             fragment::documentEnd,
         }) {
        payload.html.append(part);
    }
}

ConversionPayload makeSheetDocument(const LineList& lines) {
    const std::string_view text = lines.text();
    ConversionPayload payload;
    // Enough for lines of ordinary length. Memory that is not written to costs nothing.
    payload.html.reserve(4096 + 8 * text.size());
    payload.plainText.reserve(128 + text.size());
    appendHead(payload);
    appendRows(payload, text);
    appendTail(payload);
    return payload;
}

} // namespace text
