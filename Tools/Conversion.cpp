#include "Tools/Conversion.h"

#include "Tools/Descriptor.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <string_view>

namespace tools {

namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 20U;

/// At most `pieceSize` bytes of UTF-8 text, cut between two characters.
std::string_view firstPiece(std::string_view text) {
    std::size_t size = pieceSize;
    if (size >= text.size()) {
        return text;
    }
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U) {
        --size;
    }
    return text.substr(0, size);
}

std::error_code writeJsonString(int descriptor, std::string_view text) {
    std::error_code error = writeAll(descriptor, "\"");
    while (!error && !text.empty()) {
        const std::string_view piece = firstPiece(text);
        const std::string quoted = nlohmann::json(piece).dump();
        error = writeAll(descriptor, std::string_view(quoted).substr(1, quoted.size() - 2));
        text.remove_prefix(piece.size());
    }
    return error ? error : writeAll(descriptor, "\"");
}

} // namespace

std::optional<ConvertMode> parseConvertMode(std::span<const char* const> arguments) {
    if (arguments.empty()) {
        return ConvertMode::html;
    }
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

std::string countOutput(const text::ConversionPayload& payload) {
    return std::to_string(payload.stickyCount) + "\n";
}

std::error_code writeJson(int descriptor, const text::ConversionPayload& payload) {
    std::error_code error = writeAll(descriptor, "{\"html\":");
    if (!error) {
        error = writeJsonString(descriptor, payload.html.view());
    }
    if (!error) {
        error = writeAll(descriptor, ",\"plainText\":");
    }
    if (!error) {
        error = writeJsonString(descriptor, payload.plainText.view());
    }
    if (!error) {
        error =
            writeAll(descriptor, ",\"stickyCount\":" + std::to_string(payload.stickyCount) + "}\n");
    }
    return error;
}

} // namespace tools
