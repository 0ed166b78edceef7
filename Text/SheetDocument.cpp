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
#include <utility>

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

/// A text that is written from its start to its end, in room that is there before it is needed.
class WrittenText {
  public:
    explicit WrittenText(std::size_t room) : next_(text_.appendUninitialised(room)), room_(room) {}

    /// Where to write at most `size` bytes. Until advanceTo() they do not count.
    [[nodiscard]] char* room(std::size_t size) {
        if (size > room_) {
            grow(size);
        }
        return next_;
    }

    /// The text goes on at `next`, behind what was written to room().
    void advanceTo(char* next) {
        room_ -= static_cast<std::size_t>(next - next_);
        next_ = next;
    }

    [[nodiscard]] foundation::TextBuffer take() {
        text_.truncate(text_.size() - room_);
        return std::move(text_);
    }

  private:
    /// Long texts are moved, not copied, and room that is not written to costs no memory.
    void grow(std::size_t size) {
        const std::size_t added = std::max(size, text_.size() / 2);
        next_ = text_.appendUninitialised(added) - room_;
        room_ += added;
    }

    foundation::TextBuffer text_;
    char* next_;
    std::size_t room_;
};

/// Cells are escaped in pieces of at most this size: each is given the room that it needs at worst.
constexpr std::size_t pieceSize = 4096;

/// Room for the html of that many rows and bytes of cells: all that it needs unless it is full of
/// markup.
std::size_t expectedHtmlSize(std::size_t rows, std::size_t cells) {
    return fixedSizeLimit + rows * rowSeparator.size() + cells +
           std::min(cells, pieceSize) * (longestReplacement - 1) + cells / 8 + escapeSlack;
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

void writeCell(WrittenText& html, std::string_view line, const char* readableEnd) {
    for (; !line.empty(); line.remove_prefix(std::min(pieceSize, line.size()))) {
        const std::string_view piece = line.substr(0, pieceSize);
        char* const room = html.room(piece.size() * longestReplacement + escapeSlack);
        html.advanceTo(writeEscaped(room, piece, readableEnd));
    }
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
    std::size_t rows = 0;
    std::size_t cells = 0;
    for (const std::string_view line : lines.lines()) {
        rows += line.empty() ? 0U : 1U;
        cells += line.size();
    }
    WrittenText html(expectedHtmlSize(rows, cells));
    WrittenText plainText(cells + rows + copySlack);
    const char* const readableEnd = lines.text().data() + lines.text().size();

    html.advanceTo(write(html.room(fragment::head.size()), fragment::head));
    std::size_t rowCount = 0;
    for (const std::string_view line : lines.lines()) {
        if (isBlank(line)) {
            continue;
        }
        const std::string_view opening =
            rowCount == 0 ? fragment::rowStart
                          : std::string_view(rowSeparator.data(), rowSeparator.size());
        html.advanceTo(write(html.room(rowSeparator.size()), opening));
        writeCell(html, line, readableEnd);

        char* plainEnd = plainText.room(1 + std::max(line.size(), copySlack));
        if (rowCount > 0) {
            *plainEnd++ = '\n';
        }
        plainText.advanceTo(writeLine(plainEnd, line, readableEnd));
        ++rowCount;
    }
    if (rowCount > 0) {
        html.advanceTo(write(html.room(fragment::rowEnd.size()), fragment::rowEnd));
    }
    html.advanceTo(writeTail(html.room(fixedSizeLimit), rowCount));
    return {.html = html.take(),
            .plainText = plainText.take(),
            .stickyCount = static_cast<std::int64_t>(rowCount)};
}

} // namespace text
