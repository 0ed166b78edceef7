#include "Pastewise/ClipboardManager.h"

#include "Text/CharacterClasses.h"
#include "Text/SheetDocument.h"

#include <utility>

namespace pastewise {

using foundation::LogLevel;
using foundation::TextBuffer;
using platform::PasteboardType;

ClipboardManager::ClipboardManager(platform::Pasteboard& pasteboard,
                                   const foundation::LoggerFactory& loggers)
    : pasteboard_(pasteboard), logger_(loggers.logger("ClipboardManager")) {}

std::optional<text::LineList> ClipboardManager::readClipboard() {
    logger_.debug("Reading from clipboard...");
    std::optional<TextBuffer> text = pasteboard_.string(PasteboardType::string);
    if (!text) {
        logger_.error("No text found in clipboard");
        return std::nullopt;
    }
    return processText(std::move(*text));
}

text::LineList ClipboardManager::processText(TextBuffer text) const {
    logger_.debug("Processing text with length: %ld",
                  [&text] { return text::countGraphemeClusters(text.view()); });
    text::LineList lines(std::move(text));
    if (logger_.isEnabled(LogLevel::debug)) {
        text::forEachLine(lines.text(), [this](std::string_view line) {
            static_cast<void>(sanitizeLine(text::trim(line)));
        });
    }
    logger_.debug("Split into %ld lines", [&lines] { return lines.size(); });
    return lines;
}

std::string_view ClipboardManager::sanitizeLine(std::string_view line) const {
    const text::SanitizedLine sanitized = text::sanitizeLine(line);
    if (sanitized.hadBullet) {
        logger_.debug("Removing symbol bullet prefix from line: %s", line);
    }
    if (sanitized.numericPattern) {
        logger_.debug("Removing numeric list prefix using pattern %s from line: %s",
                      text::numericPrefixPatterns[*sanitized.numericPattern],
                      line);
    }
    return sanitized.text;
}

ConversionPayload ClipboardManager::generateHTML(const text::LineList& lines) const {
    logger_.debug("Generating Miro-compatible HTML from raw lines: %ld",
                  [&lines] { return lines.size(); });
    ConversionPayload payload = text::makeSheetDocument(lines);
    logger_.debug("Sanitized line count after removing blanks: %ld", payload.stickyCount);
    logger_.debug("Generated HTML with sanitized count: %ld", payload.stickyCount);
    return payload;
}

TextBuffer ClipboardManager::escapeHTML(std::string_view text) {
    return text::escapeHTML(text);
}

bool ClipboardManager::writeToClipboard(TextBuffer html, TextBuffer plainText) {
    logger_.debug(
        "Writing to clipboard - HTML length: %ld, Plain text length: %ld",
        [&html] { return text::countGraphemeClusters(html.view()); },
        [&plainText] { return text::countGraphemeClusters(plainText.view()); });
    pasteboard_.clearContents();
    if (!pasteboard_.setString(std::move(plainText), PasteboardType::string) ||
        !pasteboard_.setString(std::move(html), PasteboardType::html)) {
        logger_.error("Failed to write to clipboard");
        return false;
    }
    logger_.debug("Successfully wrote to clipboard");
    return true;
}

} // namespace pastewise
