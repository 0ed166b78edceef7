#pragma once

#include "Text/ConversionPayload.h"
#include "Text/LineList.h"

namespace text {

/// Builds the document of one column with a row for each line that is not blank, and its plain
/// text. Lines are in UTF-8 and stand in the payload as they are, markup escaped; a line is blank
/// when trimming leaves nothing of it. Memory-safe on any bytes. Throws std::bad_alloc.
[[nodiscard]] ConversionPayload makeSheetDocument(const LineList& lines);

} // namespace text
