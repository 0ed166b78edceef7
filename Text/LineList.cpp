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

/// The number of line feeds and carriage returns, of which a pair counts as two.
std::size_t countBreakCharacters(std::string_view text) {
    const auto isBreak = [](char byte) {
        return static_cast<unsigned char>((byte == '\n') + (byte == '\r'));
    };
    // In parts whose count fits into a byte, so that compilers count in many bytes side by side.
    constexpr std::size_t partSize = 128;
    std::size_t count = 0;
    for (; text.size() >= partSize; text.remove_prefix(partSize)) {
        unsigned char inPart = 0;
        for (std::size_t i = 0; i < partSize; ++i) {
            inPart += isBreak(text[i]);
        }
        count += inPart;
    }
    for (const char byte : text) {
        count += isBreak(byte);
    }
    return count;
}

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
    // Enough in any case. Room that pairs leave over is never touched.
    lines.reserve(countBreakCharacters(text.view()) + 1);
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
