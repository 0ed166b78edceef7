#include "Text/SheetDocument.h"

#include "Text/HtmlEscape.h"
#include "Text/SheetFragments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace text {

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

} // namespace

ConversionPayload makeSheetDocument(const LineList& lines) {
    const std::string_view text = lines.text();
    const char* const readableEnd = text.data() + text.size();
    ConversionPayload payload;
    // Enough for lines of ordinary length. Memory that is not written to costs nothing.
    payload.html.reserve(4096 + 8 * text.size());
    payload.plainText.reserve(128 + text.size());
    payload.html.append(fragment::head);
    lines.forEach([&payload, readableEnd](std::string_view line) {
        if (!line.empty()) {
            appendRow(payload, line, readableEnd);
        }
    });
    appendTail(payload);
    return payload;
}

} // namespace text
