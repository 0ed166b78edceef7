#include "fuzz/DifferentialCheck.h"

#include "Foundation/FatalError.h"
#include "Foundation/TextBuffer.h"
#include "Foundation/Unicode.h"
#include "Text/CharacterClasses.h"
#include "Text/LineList.h"
#include "Text/SheetDocument.h"
#include "Tools/StreamConversion.h"
#include "tests/Reference/ReferenceConversion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <numeric>
#include <utility>

namespace fuzz {

namespace {

using foundation::TextBuffer;

constexpr std::size_t bytesPerDumpLine = 16;

std::string hexDump(std::string_view bytes) {
    std::string dump;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::array<char, 16> digits{};
        const bool isLineStart = i % bytesPerDumpLine == 0;
        std::snprintf(digits.data(),
                      digits.size(),
                      isLineStart ? "\n  %02x" : " %02x",
                      static_cast<unsigned>(static_cast<unsigned char>(bytes[i])));
        dump += digits.data();
    }
    return dump + "\n";
}

/// The lines as one text that is unambiguous even if a line contains a line feed.
std::string listed(const std::vector<std::string>& lines) {
    std::string list;
    for (const std::string& line : lines) {
        list += std::to_string(line.size()) + ":" + line + "\n";
    }
    return list;
}

std::string streamedHtml(std::string_view bytes) {
    std::string html;
    tools::StreamConversion conversion(tools::OutputFormat::html,
                                       [&html](std::string_view text) { html += text; });
    const std::size_t pieceSize = 1 + bytes.size() % 149;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(pieceSize, bytes.size()))) {
        conversion.add(bytes.substr(0, pieceSize));
    }
    conversion.endLine();
    conversion.finish();
    return html;
}

} // namespace

Conversion convertFast(std::string_view text) {
    const text::LineList list{TextBuffer(text)};
    const text::ConversionPayload payload = text::makeSheetDocument(list);
    std::vector<std::string> lines;
    list.forEach([&lines](std::string_view line) { lines.emplace_back(line); });
    return {.lines = std::move(lines),
            .html = std::string(payload.html.view()),
            .plainText = std::string(payload.plainText.view()),
            .stickyCount = payload.stickyCount};
}

std::optional<std::string> findDifference(std::string_view bytes, const Converter& converter) {
    const TextBuffer repaired = foundation::repairUtf8(TextBuffer(bytes));
    const std::string text = reference::repairUtf8(bytes);
    const std::vector<std::string> lines = reference::processText(text);
    const reference::Payload payload = reference::generateHTML(lines);
    const Conversion conversion = converter(text);

    struct Part {
        std::string_view name;
        std::string actual;
        std::string expected;
    };

    const std::array<Part, 7> parts{{
        {"the repaired text", std::string(repaired.view()), text},
        {"the escaped text",
         std::string(text::escapeHTML(text).view()),
         reference::escapeHTML(text)},
        {"the lines", listed(conversion.lines), listed(lines)},
        {"the html", conversion.html, payload.html},
        {"the html of a stream", streamedHtml(bytes), payload.html},
        {"the plain text", conversion.plainText, payload.plainText},
        {"the count", std::to_string(conversion.stickyCount), std::to_string(payload.stickyCount)},
    }};
    for (const Part& part : parts) {
        if (part.actual != part.expected) {
            return "Difference in " + std::string(part.name) + "\nactual:" + hexDump(part.actual) +
                   "expected:" + hexDump(part.expected) + "document:" + hexDump(bytes);
        }
    }
    return std::nullopt;
}

void exerciseOnRawBytes(std::string_view bytes) {
    const Conversion conversion = convertFast(bytes);
    const std::size_t kept =
        std::accumulate(conversion.lines.begin(),
                        conversion.lines.end(),
                        std::size_t{0},
                        [](std::size_t sum, const std::string& line) { return sum + line.size(); });
    if (kept > bytes.size() || text::trim(bytes).size() > bytes.size() ||
        text::escapeHTML(bytes).size() < bytes.size() ||
        std::cmp_greater(text::countGraphemeClusters(bytes), bytes.size())) {
        foundation::fatalError("a function in Text/ returned more than its input allows");
    }
}

} // namespace fuzz
