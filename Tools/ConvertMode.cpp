#include "Tools/ConvertMode.h"

namespace tools {

std::optional<ConvertMode> parseConvertMode(std::span<const char* const> arguments) {
    if (arguments.empty()) {
        return ConvertMode::html;
    }
    // There is at most one mode and nothing else to say.
    if (arguments.size() > 1) {
        return std::nullopt;
    }
    const std::string_view argument = arguments.front();
    if (argument == "--plain") {
        return ConvertMode::plainText;
    }
    if (argument == "--count") {
        return ConvertMode::count;
    }
    if (argument == "--json") {
        return ConvertMode::json;
    }
    if (argument == "--help") {
        return ConvertMode::help;
    }
    if (argument == "--version") {
        return ConvertMode::version;
    }
    return std::nullopt;
}

} // namespace tools
