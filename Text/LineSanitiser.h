#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace text {

/// The prefixes of list items, as regular expressions in ICU syntax. They are the definition of
/// what sanitizeLine() removes, which recognises the same without an expression engine.
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

/// Takes at most one bullet and then at most one number off the start of a line in UTF-8 that is
/// trimmed and not empty. What is left is trimmed again and may be empty. Bytes that are no UTF-8
/// are neither bullets, digits nor white space.
[[nodiscard]] SanitizedLine sanitizeLine(std::string_view line);

} // namespace text
