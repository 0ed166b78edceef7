#pragma once

#include "Foundation/Interface.h"
#include "Foundation/TextBuffer.h"
#include "Text/SheetDocument.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace tools {

/// What a conversion writes. JSON is one line, an object with "html", "plainText" and
/// "stickyCount".
enum class OutputFormat : std::uint8_t { html, plainText, count, json };

/// Converts a list that comes in pieces and hands over the result in pieces. Wherever the list is
/// cut, the result is the same. Takes memory for the longest line and, for JSON, for the plain
/// text.
///
/// Ill-formed UTF-8 is repaired. Throws std::bad_alloc, std::length_error for a line of more than
/// `longestLine` bytes, and what `write` throws.
class StreamConversion : foundation::Pinned {
  public:
    static constexpr std::size_t longestLine = std::size_t{1} << 30U;

    using Write = std::function<void(std::string_view)>;

    StreamConversion(OutputFormat format, Write write);

    /// Converts the next bytes of the list, except for the begin of a line that goes on.
    void add(std::string_view bytes);

    /// Ends the last line, as a line break does.
    void endLine();

    /// Writes what remains. Nothing is written before the first of these calls that converts lines.
    void finish();

  private:
    void convertPending();
    void flush();

    OutputFormat format_;
    Write write_;
    /// Bytes that have not been converted.
    foundation::TextBuffer pending_;
    text::ConversionPayload payload_;
    /// The JSON behind the html, as far as it is known.
    foundation::TextBuffer jsonBehindHtml_;
};

} // namespace tools
