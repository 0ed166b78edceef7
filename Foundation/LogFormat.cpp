#include "Foundation/LogFormat.h"

#include <ios>
#include <locale>
#include <sstream>

namespace foundation {

namespace {

struct ValuePrinter {
    std::string& out;

    void operator()(bool value) const { out += value ? "true" : "false"; }

    void operator()(std::int64_t value) const { out += std::to_string(value); }

    void operator()(std::uint64_t value) const { out += std::to_string(value); }

    /// With a decimal point in every locale.
    void operator()(double value) const {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text << std::fixed << value;
        out += text.str();
    }

    void operator()(std::string_view value) const { out += value; }
};

} // namespace

std::vector<LogPiece> logPieces(const LogRecord& record) {
    std::vector<LogPiece> pieces(1);
    std::size_t at = 0;
    for (const LogRecord::Value& value : record.values) {
        const auto placeholder = nextLogPlaceholder(record.format, at);
        if (!placeholder) {
            break;
        }
        pieces.back().text += record.format.substr(at, placeholder->begin - at);
        if (placeholder->privacy == LogPrivacy::isPrivate) {
            pieces.push_back({.text = {}, .privacy = LogPrivacy::isPrivate});
        }
        std::visit(ValuePrinter{pieces.back().text}, value);
        if (placeholder->privacy == LogPrivacy::isPrivate) {
            pieces.emplace_back();
        }
        at = placeholder->end;
    }
    pieces.back().text += record.format.substr(at);
    return pieces;
}

std::string renderLogMessage(const LogRecord& record, LogRendering rendering) {
    std::string message;
    for (const LogPiece& piece : logPieces(record)) {
        const bool isHidden =
            piece.privacy == LogPrivacy::isPrivate && rendering == LogRendering::redacted;
        message += isHidden ? "<private>" : piece.text;
    }
    return message;
}

} // namespace foundation
