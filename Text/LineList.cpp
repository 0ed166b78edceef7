#include "Text/LineList.h"

#include "Text/Trim.h"

#include <algorithm>
#include <optional>

namespace text {

namespace {

/// How many characters of each kind break lines in a text; a pair counts in both.
struct BreakCounts {
    std::size_t lineFeeds = 0;
    std::size_t carriageReturns = 0;
};

BreakCounts countBreaks(std::string_view text) {
    // In parts whose counts fit into a byte, so that compilers count in many bytes side by side.
    constexpr std::size_t partSize = 128;
    BreakCounts counts;
    for (; text.size() >= partSize; text.remove_prefix(partSize)) {
        unsigned char lineFeeds = 0;
        unsigned char carriageReturns = 0;
        for (std::size_t i = 0; i < partSize; ++i) {
            lineFeeds += static_cast<unsigned char>(text[i] == '\n');
            carriageReturns += static_cast<unsigned char>(text[i] == '\r');
        }
        counts.lineFeeds += lineFeeds;
        counts.carriageReturns += carriageReturns;
    }
    for (const char byte : text) {
        counts.lineFeeds += byte == '\n' ? 1U : 0U;
        counts.carriageReturns += byte == '\r' ? 1U : 0U;
    }
    return counts;
}

/// Cuts a text at its line breaks, one line after the other.
class LineSplitter {
  public:
    LineSplitter(std::string_view text, const BreakCounts& counts)
        : text_(text),
          lineFeed_(counts.lineFeeds > 0 ? text.find('\n') : std::string_view::npos),
          carriageReturn_(counts.carriageReturns > 0 ? text.find('\r') : std::string_view::npos) {}

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

} // namespace

LineList LineList::of(std::span<const std::string_view> lines) {
    foundation::TextBuffer text;
    std::size_t size = 0;
    for (const std::string_view line : lines) {
        size += line.size();
    }
    text.reserve(size);
    std::vector<std::string_view> copies;
    copies.reserve(lines.size());
    for (const std::string_view line : lines) {
        text.append(line);
        copies.push_back(text.view().substr(text.size() - line.size()));
    }
    return {std::move(text), std::move(copies)};
}

LineList processText(foundation::TextBuffer text, const LineObserver& observer) {
    std::vector<std::string_view> lines;
    const BreakCounts counts = countBreaks(text.view());
    // Enough in any case. Room that pairs leave over is never touched.
    lines.reserve(counts.lineFeeds + counts.carriageReturns + 1);
    LineSplitter splitter(text.view(), counts);
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
