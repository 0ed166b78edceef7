#include "Text/SheetDocument.h"

#include "Text/HtmlEscape.h"
#include "Text/SheetFragments.h"
#include "Text/Trim.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <string>

namespace text {

namespace {

using namespace sheet_fragment;

constexpr std::size_t rowSeparatorSize = rowEnd.size() + 1 + rowStart.size();

/// What stands between two cells.
constexpr auto rowSeparator = [] {
    std::array<char, rowSeparatorSize> bytes{};
    auto* const next = std::copy(rowEnd.begin(), rowEnd.end(), bytes.begin());
    *next = '\n';
    std::copy(rowStart.begin(), rowStart.end(), next + 1);
    return bytes;
}();

/// What everything but the rows comes to at most: the fragments, and three times the longest count.
constexpr std::size_t longestCount = std::numeric_limits<std::size_t>::digits10 + 1;
constexpr std::size_t fixedSizeLimit =
    head.size() + tableEndAndGridDataOpening.size() + gridJsonStart.size() + gridJsonEnd.size() +
    gridDataClosingAndAnalyticsDataOpening.size() + analyticsJsonStart.size() +
    analyticsJsonMiddle.size() + analyticsJsonEnd.size() + documentEnd.size() + 3 * longestCount;

bool isBlank(std::string_view line) {
    return trimStart(line).empty();
}

/// How large the two texts of a payload become at most: hardly less when the blank lines are empty,
/// as they are in a list that processText() made.
struct SizeLimits {
    std::size_t html;
    std::size_t plainText;
};

SizeLimits sizeLimits(const LineList& lines) {
    std::size_t rows = 0;
    std::size_t cells = 0;
    for (const std::string_view line : lines.lines()) {
        rows += line.empty() ? 0U : 1U;
        cells += line.size();
    }
    return {.html = fixedSizeLimit + rows * rowSeparator.size() + cells +
                    escapeGrowthLimit(lines.text()),
            .plainText = cells + rows};
}

char* write(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

/// Writes everything behind the last row.
char* writeTail(char* out, std::size_t rowCount) {
    const std::string number = std::to_string(rowCount);
    out = write(out, tableEndAndGridDataOpening);
    out = write(out, gridJsonStart);
    out = write(out, number);
    out = write(out, gridJsonEnd);
    out = write(out, gridDataClosingAndAnalyticsDataOpening);
    out = write(out, analyticsJsonStart);
    out = write(out, number);
    out = write(out, analyticsJsonMiddle);
    out = write(out, number);
    out = write(out, analyticsJsonEnd);
    return write(out, documentEnd);
}

} // namespace

ConversionPayload makeSheetDocument(const LineList& lines) {
    const SizeLimits limits = sizeLimits(lines);
    ConversionPayload payload;
    char* const htmlBegin = payload.html.appendUninitialised(limits.html);
    char* const plainTextBegin = payload.plainText.appendUninitialised(limits.plainText);

    // What is written behind each cell is longer than what writing the cell may spoil there.
    static_assert(rowEnd.size() >= escapeSlack);
    char* html = write(htmlBegin, head);
    char* plainText = plainTextBegin;
    std::size_t rowCount = 0;
    for (const std::string_view line : lines.lines()) {
        if (isBlank(line)) {
            continue;
        }
        if (rowCount == 0) {
            html = write(html, rowStart);
        } else {
            html = write(html, {rowSeparator.data(), rowSeparator.size()});
            *plainText++ = '\n';
        }
        html = writeEscaped(html, line);
        plainText = write(plainText, line);
        ++rowCount;
    }
    if (rowCount > 0) {
        html = write(html, rowEnd);
    }
    html = writeTail(html, rowCount);

    payload.html.truncate(static_cast<std::size_t>(html - htmlBegin));
    payload.plainText.truncate(static_cast<std::size_t>(plainText - plainTextBegin));
    payload.stickyCount = static_cast<std::int64_t>(rowCount);
    return payload;
}

} // namespace text
