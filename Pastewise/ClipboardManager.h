#pragma once

#include "Foundation/Logger.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Pasteboard.h"
#include "Text/LineList.h"
#include "Text/SheetDocument.h"

#include <optional>
#include <string_view>

namespace pastewise {

using text::ConversionPayload;

/// Stands beside ClipboardManager without a part in the conversion.
class ConverterEngine {};

/// The one object through which the application touches the clipboard: reads it as a list of
/// lines, turns the lines into the payload, writes the payload back, and tells the log about each
/// step. Holds nothing between calls.
///
/// The text of the user's lines goes to the log only as private values, and what is said for the
/// log's sake alone, the counts of characters above all, is computed only while debug messages are
/// kept. Main thread only. Does not own the pasteboard. Every operation but writing may throw
/// std::bad_alloc; nothing has been written then.
class ClipboardManager {
  public:
    ClipboardManager(platform::Pasteboard& pasteboard, const foundation::LoggerFactory& loggers);

    /// The lines of the clipboard's plain text; none when it holds no such text. An empty text is
    /// one blank line.
    [[nodiscard]] std::optional<text::LineList> readClipboard();

    /// The lines of a text, trimmed and without their list prefixes, blank ones included.
    [[nodiscard]] text::LineList processText(foundation::TextBuffer text) const;

    /// The part of a line, trimmed and not empty, that its list prefixes leave.
    [[nodiscard]] std::string_view sanitizeLine(std::string_view line) const;

    /// The payload of the lines that are not blank.
    [[nodiscard]] ConversionPayload generateHTML(const text::LineList& lines) const;

    /// See text::escapeHTML.
    [[nodiscard]] static foundation::TextBuffer escapeHTML(std::string_view text);

    /// Replaces what the clipboard holds by the two texts. False when the pasteboard refuses one of
    /// them: it is then empty, or holds the plain text alone.
    [[nodiscard]] bool writeToClipboard(foundation::TextBuffer html,
                                        foundation::TextBuffer plainText);

  private:
    platform::Pasteboard& pasteboard_;
    foundation::Logger logger_;
};

} // namespace pastewise
