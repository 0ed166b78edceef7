#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The conversion in its slowest and most obvious form, with the literal expressions on ICU's
/// engine, to compare the fast one with. Shares only the Unicode version with it. For tests and
/// benchmarks.
namespace reference {

struct Payload {
    std::string html;
    std::string plainText;
    std::int64_t stickyCount = 0;
};

/// Well-formed UTF-8 from any bytes, as ICU repairs them.
[[nodiscard]] std::string repairUtf8(std::string_view bytes);

/// All texts from here on are well-formed UTF-8.
[[nodiscard]] std::vector<std::string> processText(std::string_view text);
[[nodiscard]] std::string sanitizeLine(std::string_view line);
[[nodiscard]] Payload generateHTML(const std::vector<std::string>& lines);
[[nodiscard]] std::string escapeHTML(std::string_view text);

/// generateHTML() of processText() without the way through UTF-8 between the two.
[[nodiscard]] Payload convert(std::string_view text);

/// Extended grapheme clusters, as ICU's break iterator finds them.
[[nodiscard]] std::int64_t countGraphemeClusters(std::string_view text);

} // namespace reference
