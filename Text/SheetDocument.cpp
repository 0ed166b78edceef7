#include "Text/SheetDocument.h"

#include "Text/HtmlEscape.h"
#include "Text/SheetFragments.h"
#include "Text/Trim.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>

namespace text {

namespace {

namespace fragment = sheet_fragment;

constexpr std::size_t rowSeparatorSize = fragment::rowEnd.size() + 1 + fragment::rowStart.size();

/// What stands between two cells.
constexpr auto rowSeparator = [] {
    std::array<char, rowSeparatorSize> bytes{};
    auto* const next = std::copy(fragment::rowEnd.begin(), fragment::rowEnd.end(), bytes.begin());
    *next = '\n';
    std::copy(fragment::rowStart.begin(), fragment::rowStart.end(), next + 1);
    return bytes;
}();

/// What everything but the rows comes to at most: the fragments, and three times the longest count.
constexpr std::size_t longestCount = std::numeric_limits<std::size_t>::digits10 + 1;
constexpr std::size_t fixedSizeLimit =
    fragment::head.size() + fragment::tableEndAndGridDataOpening.size() +
    fragment::gridJsonStart.size() + fragment::gridJsonEnd.size() +
    fragment::gridDataClosingAndAnalyticsDataOpening.size() + fragment::analyticsJsonStart.size() +
    fragment::analyticsJsonMiddle.size() + fragment::analyticsJsonEnd.size() +
    fragment::documentEnd.size() + 3 * longestCount;

/// How much more than a line the copy of it may write.
constexpr std::size_t copySlack = 64;

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
            .plainText = cells + rows + copySlack};
}

char* write(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

/// As write(), but the copy of a short text has one size, whatever the text's: copySlack bytes
/// behind it may be overwritten, and those up to `readableEnd` are there to be copied along.
char* writeLine(char* out, std::string_view line, const char* readableEnd) {
    if (line.size() > copySlack || readableEnd - line.data() < std::ptrdiff_t{copySlack}) {
        return write(out, line);
    }
    std::memcpy(out, line.data(), copySlack);
    return out + line.size();
}

/// Writes everything behind the last row.
char* writeTail(char* out, std::size_t rowCount) {
    const std::string number = std::to_string(rowCount);
    out = write(out, fragment::tableEndAndGridDataOpening);
    out = write(out, fragment::gridJsonStart);
    out = write(out, number);
    out = write(out, fragment::gridJsonEnd);
    out = write(out, fragment::gridDataClosingAndAnalyticsDataOpening);
    out = write(out, fragment::analyticsJsonStart);
    out = write(out, number);
    out = write(out, fragment::analyticsJsonMiddle);
    out = write(out, number);
    out = write(out, fragment::analyticsJsonEnd);
    return write(out, fragment::documentEnd);
}

} // namespace

ConversionPayload makeSheetDocument(const LineList& lines) {
    const SizeLimits limits = sizeLimits(lines);
    ConversionPayload payload;
    char* const htmlBegin = payload.html.appendUninitialised(limits.html);
    char* const plainTextBegin = payload.plainText.appendUninitialised(limits.plainText);

    // What is written behind each cell is longer than what writing the cell may spoil there.
    static_assert(rowSeparator.size() >= escapeSlack &&
                  fragment::rowEnd.size() + fragment::tableEndAndGridDataOpening.size() >=
                      escapeSlack);
    const char* const readableEnd = lines.text().data() + lines.text().size();
    char* html = write(htmlBegin, fragment::head);
    char* plainText = plainTextBegin;
    std::size_t rowCount = 0;
    for (const std::string_view line : lines.lines()) {
        if (isBlank(line)) {
            continue;
        }
        if (rowCount == 0) {
            html = write(html, fragment::rowStart);
        } else {
            html = write(html, {rowSeparator.data(), rowSeparator.size()});
            *plainText++ = '\n';
        }
        html = writeEscaped(html, line, readableEnd);
        plainText = writeLine(plainText, line, readableEnd);
        ++rowCount;
    }
    if (rowCount > 0) {
        html = write(html, fragment::rowEnd);
    }
    html = writeTail(html, rowCount);

    payload.html.truncate(static_cast<std::size_t>(html - htmlBegin));
    payload.plainText.truncate(static_cast<std::size_t>(plainText - plainTextBegin));
    payload.stickyCount = static_cast<std::int64_t>(rowCount);
    return payload;
}

} // namespace text
