#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The conversion in its slowest and most obvious form, with ICU running the literal expressions.
/// Tests and benchmarks compare the fast conversion with it; both share only the Unicode version.
namespace reference {

struct Payload {
    std::string html;
    std::string plainText;
    std::int64_t stickyCount = 0;
};

/// Repairs any bytes to well-formed UTF-8 with ICU.
[[nodiscard]] std::string repairUtf8(std::string_view bytes);

/// The functions below take well-formed UTF-8.
[[nodiscard]] std::vector<std::string> processText(std::string_view text);
[[nodiscard]] std::string sanitizeLine(std::string_view line);
[[nodiscard]] Payload generateHTML(const std::vector<std::string>& lines);
[[nodiscard]] std::string escapeHTML(std::string_view text);

/// generateHTML() of processText(), without converting to UTF-8 in between.
[[nodiscard]] Payload convert(std::string_view text);

/// The number of extended grapheme clusters that ICU's break iterator finds.
[[nodiscard]] std::int64_t countGraphemeClusters(std::string_view text);

} // namespace reference
