#pragma once

#include "Foundation/TextBuffer.h"
#include "Text/LineList.h"

#include <cstdint>
#include <string_view>

namespace text {

/// The text with & < > " ' replaced by "&amp;" "&lt;" "&gt;" "&quot;" "&#39;" and every other byte
/// unchanged. Entities in the text are not recognised. Throws std::bad_alloc.
[[nodiscard]] foundation::TextBuffer escapeHTML(std::string_view text);

/// Appends the escaped text to `html` and the text itself to `plainText`. Reads bytes behind the
/// text up to `readableEnd`, which lets it copy in blocks. Throws std::bad_alloc.
void appendEscaped(std::string_view text,
                   const char* readableEnd,
                   foundation::TextBuffer& html,
                   foundation::TextBuffer& plainText);

/// The result of a conversion, in UTF-8.
struct ConversionPayload {
    /// The document that a spreadsheet puts on the clipboard for one column of cells.
    foundation::TextBuffer html;
    /// The cells' lines with a line feed between neighbours.
    foundation::TextBuffer plainText;
    /// The number of cells, each of which becomes a sticky note.
    std::int64_t stickyCount = 0;
};

/// The parts of a document, in this order. Between two calls the html and plain text may be taken
/// away and emptied; only the count must stay. Throw std::bad_alloc.
void appendHead(ConversionPayload& payload);
/// Appends a row for each line that is not blank, as makeSheetDocument() does. A text that ends in
/// a line break may be followed by the rest of the list, even if that break was the first half of a
/// pair.
void appendRows(ConversionPayload& payload, std::string_view text);
/// Appends what appendRows() does, but only to the plain text.
void appendLines(ConversionPayload& payload, std::string_view text);
void appendTail(ConversionPayload& payload);

/// Builds the document of one column with a row for each line that is not blank, and its plain
/// text. Any bytes are safe; the markup among them is escaped. Throws std::bad_alloc.
[[nodiscard]] ConversionPayload makeSheetDocument(const LineList& lines);

} // namespace text
