#include "benchmarks/Pcre2Conversion.h"

#include "Text/LineSanitiser.h"
#include "Text/SheetFragments.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace benchmarks {

namespace {

namespace fragment = text::sheet_fragment;

class Expression {
  public:
    explicit Expression(std::string_view pattern) {
        int error = 0;
        PCRE2_SIZE errorOffset = 0;
        code_.reset(pcre2_compile(toUnits(pattern),
                                  pattern.size(),
                                  PCRE2_UTF | PCRE2_UCP,
                                  &error,
                                  &errorOffset,
                                  nullptr));
        if (!code_ || pcre2_jit_compile(code_.get(), PCRE2_JIT_COMPLETE) != 0) {
            throw std::bad_alloc();
        }
        match_.reset(pcre2_match_data_create_from_pattern(code_.get(), nullptr));
    }

    /// Removes the match and trims the rest.
    bool removeFrom(std::string_view& line) const {
        const int count = pcre2_jit_match(
            code_.get(), toUnits(line), line.size(), 0, PCRE2_NO_UTF_CHECK, match_.get(), nullptr);
        if (count <= 0) {
            return false;
        }
        line = text::trim(line.substr(pcre2_get_ovector_pointer(match_.get())[1]));
        return true;
    }

  private:
    struct Free {
        void operator()(pcre2_code* code) const { pcre2_code_free(code); }

        void operator()(pcre2_match_data* match) const { pcre2_match_data_free(match); }
    };

    static PCRE2_SPTR toUnits(std::string_view text) {
        return reinterpret_cast<PCRE2_SPTR>(text.data());
    }

    std::unique_ptr<pcre2_code, Free> code_;
    std::unique_ptr<pcre2_match_data, Free> match_;
};

void replaceAll(std::string& text, std::string_view pattern, std::string_view replacement) {
    std::size_t match = text.find(pattern);
    if (match == std::string::npos) {
        return;
    }
    std::string result;
    std::size_t begin = 0;
    while (match != std::string::npos) {
        result.append(text, begin, match - begin);
        result += replacement;
        begin = match + pattern.size();
        match = text.find(pattern, begin);
    }
    result.append(text, begin);
    text = std::move(result);
}

std::string sanitized(std::string_view line) {
    static const Expression bullet(text::bulletPrefixPattern);
    static const std::array<Expression, 3> numbers{Expression(text::numericPrefixPatterns[0]),
                                                   Expression(text::numericPrefixPatterns[1]),
                                                   Expression(text::numericPrefixPatterns[2])};
    std::string_view result = text::trim(line);
    if (!result.empty()) {
        bullet.removeFrom(result);
        for (const Expression& number : numbers) {
            if (number.removeFrom(result)) {
                break;
            }
        }
    }
    return std::string(result);
}

std::string escaped(std::string text) {
    replaceAll(text, "&", "&amp;");
    replaceAll(text, "<", "&lt;");
    replaceAll(text, ">", "&gt;");
    replaceAll(text, "\"", "&quot;");
    replaceAll(text, "'", "&#39;");
    return text;
}

std::string joined(const std::vector<std::string>& parts) {
    std::string result;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        result += i == 0 ? "" : "\n";
        result += parts[i];
    }
    return result;
}

} // namespace

Pcre2Payload convertWithPcre2(std::string_view text) {
    std::string normalised(text);
    replaceAll(normalised, "\r\n", "\n");
    replaceAll(normalised, "\r", "\n");
    std::vector<std::string> kept;
    std::vector<std::string> rows;
    std::size_t begin = 0;
    while (begin <= normalised.size()) {
        const std::size_t end = std::min(normalised.find('\n', begin), normalised.size());
        std::string line = sanitized(std::string_view(normalised).substr(begin, end - begin));
        if (!line.empty()) {
            rows.push_back(std::string(fragment::rowStart) + escaped(line) +
                           std::string(fragment::rowEnd));
            kept.push_back(std::move(line));
        }
        begin = end + 1;
    }
    const std::string number = std::to_string(kept.size());
    std::string html(fragment::head);
    html += joined(rows);
    html += fragment::tableEndAndGridDataOpening;
    html += std::string(fragment::gridJsonStart) + number + std::string(fragment::gridJsonEnd);
    html += fragment::gridDataClosingAndAnalyticsDataOpening;
    html += std::string(fragment::analyticsJsonStart) + number +
            std::string(fragment::analyticsJsonMiddle) + number +
            std::string(fragment::analyticsJsonEnd);
    html += fragment::documentEnd;
    return {.html = std::move(html),
            .plainText = joined(kept),
            .stickyCount = static_cast<std::int64_t>(kept.size())};
}

} // namespace benchmarks
