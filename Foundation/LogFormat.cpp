#include "Foundation/LogFormat.h"

namespace foundation {

namespace {

struct ValuePrinter {
    std::string& out;

    void operator()(bool value) const { out += value ? "true" : "false"; }

    void operator()(std::int64_t value) const { out += std::to_string(value); }

    void operator()(std::uint64_t value) const { out += std::to_string(value); }

    void operator()(double value) const { out += std::to_string(value); }

    void operator()(std::string_view value) const { out += value; }
};

} // namespace

std::string renderLogMessage(const LogRecord& record, LogRendering rendering) {
    std::string message;
    std::size_t at = 0;
    for (const LogRecord::Value& value : record.values) {
        const auto placeholder = nextLogPlaceholder(record.format, at);
        if (!placeholder) {
            break;
        }
        message += record.format.substr(at, placeholder->begin - at);
        if (placeholder->privacy == LogPrivacy::isPrivate && rendering == LogRendering::redacted) {
            message += "<private>";
        } else {
            std::visit(ValuePrinter{message}, value);
        }
        at = placeholder->end;
    }
    message += record.format.substr(at);
    return message;
}

} // namespace foundation
