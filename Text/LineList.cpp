#include "Text/LineList.h"

#include "Text/Trim.h"

#include <algorithm>
#include <optional>

namespace text {

namespace {

/// Cuts a text at its line breaks, one line after the other.
class LineSplitter {
  public:
    explicit LineSplitter(std::string_view text)
        : text_(text), lineFeed_(text.find('\n')), carriageReturn_(text.find('\r')) {}

    /// The next line; none behind the last one.
    std::optional<std::string_view> next() {
        if (begin_ > text_.size()) {
            return std::nullopt;
        }
        // Each kind of break is looked for only when the last one found is used up: a text with
        // one kind is not searched for the other line after line.
        if (lineFeed_ < begin_) {
            lineFeed_ = text_.find('\n', begin_);
        }
        if (carriageReturn_ < begin_) {
            carriageReturn_ = text_.find('\r', begin_);
        }
        const std::size_t end = std::min({lineFeed_, carriageReturn_, text_.size()});
        const std::string_view line = text_.substr(begin_, end - begin_);
        const bool isPair = end == carriageReturn_ && text_.substr(end + 1).starts_with('\n');
        begin_ = end + (isPair ? 2 : 1);
        return line;
    }

  private:
    std::string_view text_;
    std::size_t begin_ = 0;
    std::size_t lineFeed_;
    std::size_t carriageReturn_;
};

std::size_t countLines(std::string_view text) {
    auto breaks = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    std::size_t carriageReturn = text.find('\r');
    while (carriageReturn != std::string_view::npos) {
        if (!text.substr(carriageReturn + 1).starts_with('\n')) {
            ++breaks;
        }
        carriageReturn = text.find('\r', carriageReturn + 1);
    }
    return breaks + 1;
}

} // namespace

LineList processText(foundation::TextBuffer text, const LineObserver& observer) {
    std::vector<std::string_view> lines;
    lines.reserve(countLines(text.view()));
    LineSplitter splitter(text.view());
    while (const auto line = splitter.next()) {
        const std::string_view trimmed = trim(*line);
        const SanitizedLine sanitized = sanitizeLine(trimmed);
        if (observer && !trimmed.empty()) {
            observer(trimmed, sanitized);
        }
        lines.push_back(sanitized.text);
    }
    return {std::move(text), std::move(lines)};
}

} // namespace text
