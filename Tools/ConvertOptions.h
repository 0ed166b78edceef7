#pragma once

#include "Tools/StreamConversion.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// The command line of pastewise-convert.
struct ConvertOptions {
    enum class Action : std::uint8_t { convert, help, version };

    Action action = Action::convert;
    OutputFormat format = OutputFormat::html;
    bool isNullSeparated = false;
    /// "-" is standard output.
    std::filesystem::path output = "-";
    /// "-" is standard input.
    std::vector<std::string> files{"-"};
};

inline constexpr std::string_view convertUsage = "Usage: pastewise-convert [OPTION]... [FILE]...\n";

/// What --help writes.
extern const std::string_view convertHelp;

/// Returns nullopt if the arguments are invalid, after a line on standard error for a wrong option.
[[nodiscard]] std::optional<ConvertOptions> parseConvertOptions(int argc, char** argv);

} // namespace tools
