#pragma once

#include "Text/SheetDocument.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

namespace tools {

/// What pastewise-convert writes to standard output.
enum class ConvertMode : std::uint8_t { html, plainText, count, json, help, version };

inline constexpr std::string_view convertUsage =
    "Usage: pastewise-convert [--plain | --count | --json | --help | --version]\n";

/// Parses the arguments after the program name. Returns nullopt if they are invalid.
[[nodiscard]] std::optional<ConvertMode> parseConvertMode(std::span<const char* const> arguments);

/// The number of sticky notes in decimal and a line feed.
[[nodiscard]] std::string countOutput(const text::ConversionPayload& payload);

/// Writes the payload as one line of JSON, an object with "html", "plainText" and "stickyCount",
/// and a line feed. Writes in pieces to avoid a second copy of a large payload in memory. The
/// payload must be well-formed UTF-8. Throws std::bad_alloc.
[[nodiscard]] std::error_code writeJson(int descriptor, const text::ConversionPayload& payload);

} // namespace tools
