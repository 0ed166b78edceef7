#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tools {

/// What pastewise-convert is asked to write to standard output.
enum class ConvertMode : std::uint8_t { html, plainText, count, json, help, version };

inline constexpr std::string_view convertUsage =
    "Usage: pastewise-convert [--plain | --count | --json | --help | --version]\n";

/// The mode that the arguments behind the program's name ask for; none when they make no sense.
[[nodiscard]] std::optional<ConvertMode> parseConvertMode(std::span<const char* const> arguments);

} // namespace tools
