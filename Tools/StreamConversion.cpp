#include "Tools/StreamConversion.h"

#include "Foundation/Unicode.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace tools {

namespace {

/// The text as it stands between the quotation marks of a JSON string.
std::string quoted(std::string_view text) {
    const std::string string = nlohmann::json(text).dump();
    return string.substr(1, string.size() - 2);
}

} // namespace

StreamConversion::StreamConversion(OutputFormat format, Write write)
    : format_(format), write_(std::move(write)) {
    text::appendHead(payload_);
}

void StreamConversion::add(std::string_view bytes) {
    const auto lastBreak = std::find_if(
        bytes.rbegin(), bytes.rend(), [](char byte) { return byte == '\n' || byte == '\r'; });
    const auto end = static_cast<std::size_t>(bytes.rend() - lastBreak);
    pending_.append(bytes.substr(0, end));
    if (end > 0) {
        convertPending();
    }
    pending_.append(bytes.substr(end));
    if (pending_.size() > longestLine) {
        throw std::length_error("a line is longer than 1 GiB");
    }
}

void StreamConversion::endLine() {
    convertPending();
}

void StreamConversion::finish() {
    text::appendTail(payload_);
    flush();
    const std::string count = std::to_string(payload_.stickyCount);
    if (format_ == OutputFormat::json) {
        write_(jsonBehindHtml_.view());
        write_(R"(","stickyCount":)" + count + "}\n");
    } else if (format_ == OutputFormat::count) {
        write_(count + "\n");
    }
}

void StreamConversion::convertPending() {
    pending_ = foundation::repairUtf8(std::move(pending_));
    switch (format_) {
    case OutputFormat::html:
    case OutputFormat::json:
        text::appendRows(payload_, pending_.view());
        break;
    case OutputFormat::plainText:
    case OutputFormat::count:
        text::appendLines(payload_, pending_.view());
        break;
    }
    pending_.truncate(0);
    flush();
}

void StreamConversion::flush() {
    switch (format_) {
    case OutputFormat::html:
        write_(payload_.html.view());
        break;
    case OutputFormat::plainText:
        write_(payload_.plainText.view());
        break;
    case OutputFormat::count:
        break;
    case OutputFormat::json:
        if (jsonBehindHtml_.empty()) {
            write_(R"({"html":")");
            jsonBehindHtml_.append(R"(","plainText":")");
        }
        write_(quoted(payload_.html.view()));
        jsonBehindHtml_.append(quoted(payload_.plainText.view()));
        break;
    }
    payload_.html.truncate(0);
    payload_.plainText.truncate(0);
}

} // namespace tools
