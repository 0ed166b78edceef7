#pragma once

#include "Foundation/TextBuffer.h"

#include <cstdint>

namespace text {

/// The result of one conversion, in UTF-8.
struct ConversionPayload {
    /// The document that a spreadsheet puts on the clipboard for one column of cells.
    foundation::TextBuffer html;
    /// The lines of the cells with a line feed between neighbours.
    foundation::TextBuffer plainText;
    /// The number of cells, each of which becomes a sticky note.
    std::int64_t stickyCount = 0;
};

} // namespace text
