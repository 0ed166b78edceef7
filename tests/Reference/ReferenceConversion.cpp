#include "tests/Reference/ReferenceConversion.h"

#include "Text/CharacterClasses.h"

#include <unicode/brkiter.h>
#include <unicode/regex.h>
#include <unicode/uniset.h>
#include <unicode/unistr.h>

#include <array>
#include <memory>
#include <stdexcept>

namespace reference {

namespace {

using icu::UnicodeString;

void check(UErrorCode status) {
    if (U_FAILURE(status)) {
        throw std::runtime_error(u_errorName(status));
    }
}

UnicodeString fromUtf8(std::string_view text) {
    return UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string toUtf8(const UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

/// A compiled regular expression.
class Expression {
  public:
    explicit Expression(const UnicodeString& pattern) {
        UErrorCode status = U_ZERO_ERROR;
        matcher_ = std::make_unique<icu::RegexMatcher>(pattern, 0, status);
        // A run of a million digits overflows ICU's default stack, and ICU reports no match.
        matcher_->setStackLimit(0, status);
        check(status);
    }

    /// Removes the match at the start of the text. Returns whether there was one.
    bool removeFrom(UnicodeString& text) {
        UErrorCode status = U_ZERO_ERROR;
        matcher_->reset(text);
        const bool isFound = matcher_->find(status) != 0;
        check(status);
        if (isFound) {
            text = matcher_->replaceAll(UnicodeString(), status);
            check(status);
        }
        return isFound;
    }

  private:
    std::unique_ptr<icu::RegexMatcher> matcher_;
};

Expression& bulletExpression() {
    static Expression expression(u"^[•\\-*·+→⁃‣⁌⁍]\\s*");
    return expression;
}

/// ^\d+ without digits from Unicode versions newer than ours.
UnicodeString leadingDigits() {
    const std::string version = std::to_string(text::unicodeVersion);
    return fromUtf8("^[\\p{Nd}&&\\p{Age=" + version + ".0}]+");
}

std::array<Expression, 3>& numericExpressions() {
    static std::array<Expression, 3> expressions{Expression(leadingDigits() + u"\\.\\s+"),
                                                 Expression(leadingDigits() + u"\\s*[-–—]\\s+"),
                                                 Expression(leadingDigits() + u"\\:\\s+")};
    return expressions;
}

UnicodeString trimmed(const UnicodeString& text) {
    static const icu::UnicodeSet whiteSpace = [] {
        UErrorCode status = U_ZERO_ERROR;
        icu::UnicodeSet set(u"[[:White_Space:]]", status);
        check(status);
        return set;
    }();
    const std::int32_t begin = whiteSpace.span(text, 0, USET_SPAN_CONTAINED);
    if (begin == text.length()) {
        return {};
    }
    const std::int32_t end = whiteSpace.spanBack(text, text.length(), USET_SPAN_CONTAINED);
    return {text, begin, end - begin};
}

UnicodeString sanitized(UnicodeString line) {
    if (bulletExpression().removeFrom(line)) {
        line = trimmed(line);
    }
    for (Expression& expression : numericExpressions()) {
        if (expression.removeFrom(line)) {
            return trimmed(line);
        }
    }
    return line;
}

/// Unlike UnicodeString::findAndReplace, does not move the rest of the text for each match.
UnicodeString replaceAll(const UnicodeString& text,
                         const UnicodeString& pattern,
                         const UnicodeString& replacement) {
    UnicodeString result;
    std::int32_t begin = 0;
    std::int32_t match = text.indexOf(pattern);
    while (match >= 0) {
        result.append(text, begin, match - begin);
        result += replacement;
        begin = match + pattern.length();
        match = text.indexOf(pattern, begin);
    }
    return result.append(text, begin, text.length() - begin);
}

std::vector<UnicodeString> processed(UnicodeString text) {
    text = replaceAll(text, u"\r\n", u"\n");
    text = replaceAll(text, u"\r", u"\n");
    std::vector<UnicodeString> lines;
    std::int32_t begin = 0;
    while (true) {
        const std::int32_t lineFeed = text.indexOf(u'\n', begin);
        const std::int32_t end = lineFeed < 0 ? text.length() : lineFeed;
        const UnicodeString line = trimmed(text.tempSubStringBetween(begin, end));
        lines.push_back(line.isEmpty() ? line : sanitized(line));
        if (lineFeed < 0) {
            return lines;
        }
        begin = lineFeed + 1;
    }
}

UnicodeString escaped(UnicodeString text) {
    text = replaceAll(text, u"&", u"&amp;");
    text = replaceAll(text, u"<", u"&lt;");
    text = replaceAll(text, u">", u"&gt;");
    text = replaceAll(text, u"\"", u"&quot;");
    return replaceAll(text, u"'", u"&#39;");
}

/// The document with placeholders for the rows and counts.
constexpr std::string_view documentForm = R"form(<meta charset='utf-8'>
<google-sheets-html-origin>
<style type='text/css'>
    .s0 {
        font-family: Arial;
        font-size: 14px;
        white-space: pre-wrap;
        background: rgb(255, 255, 255);
        vertical-align: bottom;
    }
    td {
        border: 1px solid #ccc;
        overflow: hidden;
        padding: 2px 3px;
        vertical-align: middle;
        font-family: Arial;
    }
    table {
        border-collapse: collapse;
        table-layout: fixed;
        width: 100%;
    }
</style>
<table data-sheets-root="1">
    {rows}
</table>
<script type="application/json" id="grid-data">
{
    "rowCount": {count},
    "columnCount": 1,
    "frozenRowCount": 0,
    "frozenColumnCount": 0,
    "hideGridlines": true,
    "rowHeightCache": {},
    "columnWidthCache": {}
}
</script>
<script type="application/json" id="analytics-data">
{
    "event": "tabular_data_parsed",
    "properties": {
        "children": {
            "grid_text": {count}
        },
        "columns_count": 1,
        "source": "GoogleSpreadsheet",
        "rows_count": {count},
        "format": "html",
        "type": "spreadsheet"
    }
}
</script>)form";

constexpr std::string_view rowForm = R"form(<tr style='height: 20px'>
    <td class='s0' dir='ltr' style='text-align: left; padding: 2px 3px;'>{cell}</td>
</tr>)form";

UnicodeString joined(const std::vector<UnicodeString>& parts) {
    UnicodeString result;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        result += i == 0 ? UnicodeString() : UnicodeString(u'\n');
        result += parts[i];
    }
    return result;
}

Payload generated(const std::vector<UnicodeString>& lines) {
    std::vector<UnicodeString> kept;
    std::vector<UnicodeString> rows;
    const UnicodeString row = fromUtf8(rowForm);
    for (const UnicodeString& line : lines) {
        if (!trimmed(line).isEmpty()) {
            kept.push_back(line);
            rows.push_back(replaceAll(row, u"{cell}", escaped(line)));
        }
    }
    const UnicodeString count = fromUtf8(std::to_string(kept.size()));
    const UnicodeString document = replaceAll(fromUtf8(documentForm), u"{count}", count);
    return {.html = toUtf8(replaceAll(document, u"{rows}", joined(rows))),
            .plainText = toUtf8(joined(kept)),
            .stickyCount = static_cast<std::int64_t>(kept.size())};
}

std::vector<std::string> toUtf8(const std::vector<UnicodeString>& texts) {
    std::vector<std::string> result;
    result.reserve(texts.size());
    for (const UnicodeString& text : texts) {
        result.push_back(toUtf8(text));
    }
    return result;
}

} // namespace

std::string repairUtf8(std::string_view bytes) {
    return toUtf8(fromUtf8(bytes));
}

std::vector<std::string> processText(std::string_view text) {
    return toUtf8(processed(fromUtf8(text)));
}

std::string sanitizeLine(std::string_view line) {
    return toUtf8(sanitized(fromUtf8(line)));
}

Payload generateHTML(const std::vector<std::string>& lines) {
    std::vector<UnicodeString> texts;
    texts.reserve(lines.size());
    for (const std::string& line : lines) {
        texts.push_back(fromUtf8(line));
    }
    return generated(texts);
}

std::string escapeHTML(std::string_view text) {
    return toUtf8(escaped(fromUtf8(text)));
}

Payload convert(std::string_view text) {
    return generated(processed(fromUtf8(text)));
}

std::int64_t countGraphemeClusters(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> iterator(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    check(status);
    const UnicodeString characters = fromUtf8(text);
    iterator->setText(characters);
    std::int64_t count = 0;
    while (iterator->next() != icu::BreakIterator::DONE) {
        ++count;
    }
    return count;
}

} // namespace reference
