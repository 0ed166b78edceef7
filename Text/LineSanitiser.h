#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace text {

/// The prefixes of list items, as regular expressions in ICU syntax. They define what
/// sanitizeLine() removes; it recognises the same without an expression engine.
inline constexpr std::string_view bulletPrefixPattern = R"(^[•\-*·+→⁃‣⁌⁍]\s*)";
inline constexpr std::array<std::string_view, 3> numericPrefixPatterns{
    R"(^\d+\.\s+)", R"(^\d+\s*[-–—]\s+)", R"(^\d+\:\s+)"};

struct SanitizedLine {
    /// A part of the line that was given.
    std::string_view text;
    bool hadBullet = false;
    /// The index in numericPrefixPatterns of the pattern that matched.
    std::optional<std::size_t> numericPattern = std::nullopt;
};

/// The text without the white space at both ends.
[[nodiscard]] std::string_view trim(std::string_view text);

/// Trims a line in UTF-8 and removes at most one bullet and then at most one number from its start.
/// What is left is trimmed, too, and may be empty. Ill-formed sequences are neither bullets, digits
/// nor white space.
[[nodiscard]] SanitizedLine sanitizeLine(std::string_view line);

} // namespace text
