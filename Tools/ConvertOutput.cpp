#include "Tools/ConvertOutput.h"

#include <nlohmann/json.hpp>

#include <string>

namespace tools {

using foundation::TextBuffer;

TextBuffer countOutput(const text::ConversionPayload& payload) {
    return TextBuffer(std::to_string(payload.stickyCount) + "\n");
}

TextBuffer jsonOutput(const text::ConversionPayload& payload) {
    // One member after the other, so that not all of them are in memory twice at once.
    TextBuffer output;
    output.append("{\"html\":");
    output.append(nlohmann::json(payload.html.view()).dump());
    output.append(",\"plainText\":");
    output.append(nlohmann::json(payload.plainText.view()).dump());
    output.append(",\"stickyCount\":");
    output.append(nlohmann::json(payload.stickyCount).dump());
    output.append("}\n");
    return output;
}

} // namespace tools
