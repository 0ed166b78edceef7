#include "Text/SheetDocument.h"

#include "Text/HtmlEscape.h"
#include "Text/SheetFragments.h"
#include "Text/Trim.h"

#include <algorithm>
#include <array>
#include <cstring>
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

struct Measure {
    std::size_t count = 0;
    std::size_t size = 0;
    std::size_t escapedSize = 0;
};

bool isBlank(std::string_view line) {
    return trimStart(line).empty();
}

Measure measure(std::span<const std::string_view> lines) {
    Measure sum;
    for (const std::string_view line : lines) {
        if (!isBlank(line)) {
            ++sum.count;
            sum.size += line.size();
            sum.escapedSize += escapedSize(line);
        }
    }
    return sum;
}

char* write(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

/// Everything behind the last row.
std::string documentTail(std::size_t count) {
    const std::string number = std::to_string(count);
    std::string tail;
    tail.reserve(640);
    for (const std::string_view piece : {tableEndAndGridDataOpening,
                                         gridJsonStart,
                                         std::string_view(number),
                                         gridJsonEnd,
                                         gridDataClosingAndAnalyticsDataOpening,
                                         analyticsJsonStart,
                                         std::string_view(number),
                                         analyticsJsonMiddle,
                                         std::string_view(number),
                                         analyticsJsonEnd,
                                         documentEnd}) {
        tail += piece;
    }
    return tail;
}

} // namespace

ConversionPayload makeSheetDocument(std::span<const std::string_view> lines) {
    const Measure total = measure(lines);
    ConversionPayload payload;
    payload.stickyCount = static_cast<std::int64_t>(total.count);
    const std::string tail = documentTail(total.count);
    std::size_t htmlSize = head.size() + tail.size();
    std::size_t plainTextSize = 0;
    if (total.count > 0) {
        const std::size_t separators = total.count - 1;
        htmlSize +=
            rowStart.size() + separators * rowSeparator.size() + total.escapedSize + rowEnd.size();
        plainTextSize = total.size + separators;
    }

    // What is written behind each cell is longer than what writing the cell may spoil there.
    static_assert(rowEnd.size() >= escapeSlack);
    char* html = write(payload.html.appendUninitialised(htmlSize), head);
    char* plainText = payload.plainText.appendUninitialised(plainTextSize);
    bool isFirst = true;
    for (const std::string_view line : lines) {
        if (isBlank(line)) {
            continue;
        }
        if (isFirst) {
            html = write(html, rowStart);
            isFirst = false;
        } else {
            html = write(html, {rowSeparator.data(), rowSeparator.size()});
            *plainText++ = '\n';
        }
        html = writeEscaped(html, line);
        plainText = write(plainText, line);
    }
    if (!isFirst) {
        html = write(html, rowEnd);
    }
    static_cast<void>(write(html, tail));
    return payload;
}

} // namespace text
